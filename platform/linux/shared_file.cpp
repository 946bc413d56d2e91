#include "platform/linux/shared_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "base/run_time_error.h"
#include "base/text.h"

namespace polefit {

namespace {

constexpr std::size_t kChunkSize = 1U << 19U;
constexpr unsigned kNewFileMode = 0666;

[[noreturn]] void ThrowSystemError() {
  throw FromSystemError(errno);
}

/// What a missing file is called: its folder may be missing too.
int MissingNumber(const std::string& path) {
  const std::size_t cut = path.rfind('/');
  const bool folderIsThere =
      cut == std::string::npos || ::access(path.substr(0, cut + 1).c_str(), F_OK) == 0;
  return folderIsThere ? error_number::kFileNotFound : error_number::kPathNotFound;
}

bool SomethingIsAt(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0;
}

}  // namespace

SharedFile::~SharedFile() {
  CloseDescriptors();
}

void SharedFile::RequireClosed() const {
  if (input_ >= 0 || output_ >= 0) throw MakeRunTimeError(error_number::kFileAlreadyOpen);
}

void SharedFile::OpenForReading(const std::string& path) {
  RequireClosed();
  input_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (input_ < 0) throw FromSystemError(errno, MissingNumber(path));
  inputBuffer_.clear();
  inputAt_ = 0;
  linesRead_ = 0;
}

/// Reads on behind what is left of the buffer; false at the end of the file.
bool SharedFile::FillInput() {
  inputBuffer_.erase(0, std::exchange(inputAt_, 0));
  const std::size_t held = inputBuffer_.size();
  inputBuffer_.resize(held + kChunkSize);
  ssize_t length = 0;
  do {
    length = ::read(input_, inputBuffer_.data() + held, kChunkSize);
  } while (length < 0 && errno == EINTR);
  inputBuffer_.resize(held + static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
  if (length < 0) ThrowSystemError();
  return length > 0;
}

/// The next line with its end.
std::string_view SharedFile::TakeLine() {
  std::size_t end = inputBuffer_.find('\n', inputAt_);
  while (end == std::string::npos) {
    const std::size_t searched = inputBuffer_.size() - inputAt_;
    if (!FillInput()) break;
    end = inputBuffer_.find('\n', searched);
  }
  const std::size_t start = inputAt_;
  inputAt_ = end == std::string::npos ? inputBuffer_.size() : end + 1;
  if (inputAt_ == start) throw MakeRunTimeError(error_number::kInputPastEndOfFile);
  return std::string_view(inputBuffer_).substr(start, inputAt_ - start);
}

std::string_view SharedFile::ReadLine() {
  if (input_ < 0) throw MakeRunTimeError(error_number::kBadFileNumber);
  std::string_view bytes = TakeLine();
  ++linesRead_;
  if (bytes.ends_with("\r\n")) {
    bytes.remove_suffix(2);
  } else if (bytes.ends_with('\n')) {
    bytes.remove_suffix(1);
  }
  return FromWindows1252(bytes, line_);
}

void SharedFile::SetFormerAside() {
  struct stat own {};
  if (::lstat(target_.c_str(), &own) != 0) return;
  struct stat content {};
  const bool reached = ::stat(target_.c_str(), &content) == 0;
  if (reached && !S_ISREG(content.st_mode)) return;  // a device or a pipe has no former content
  if (S_ISREG(own.st_mode)) {
    // The rename alone would pass over a write-protected file without a word.
    if (::faccessat(AT_FDCWD, target_.c_str(), W_OK, AT_EACCESS) != 0) ThrowSystemError();
    formerMode_ = own.st_mode & 07777U;
  }
  std::string aside = target_ + "~";
  while (SomethingIsAt(aside)) aside += '~';
  if (::rename(target_.c_str(), aside.c_str()) != 0) ThrowSystemError();
  former_ = aside;
}

void SharedFile::CreateTarget() {
  output_ = ::open(target_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kNewFileMode);
  if (output_ < 0) {
    const RunTimeError error = FromSystemError(errno, error_number::kPathNotFound);
    if (!former_.empty() && !SomethingIsAt(target_)) {
      ::rename(former_.c_str(), target_.c_str());
      former_.clear();
    }
    throw error;
  }
  if (formerMode_) ::fchmod(output_, *formerMode_);
}

void SharedFile::OpenForWriting(const std::string& path) {
  RequireClosed();
  const bool tryAgain = path == target_ && !former_.empty();
  if (!tryAgain) {
    target_ = path;
    former_.clear();
    formerMode_.reset();
    SetFormerAside();
  }
  CreateTarget();
  pending_.clear();
  replacedCharacters_ = 0;
}

void SharedFile::WriteLine(std::string_view line) {
  if (output_ < 0) throw MakeRunTimeError(error_number::kBadFileNumber);
  pending_ += line;
  pending_ += "\r\n";
  if (pending_.size() >= kChunkSize) Flush();
}

/// Writes the pending lines. What could not be written is dropped, so that nothing sends it twice.
void SharedFile::Flush() {
  std::string_view rest = ToWindows1252(pending_, bytes_, replacedCharacters_);
  while (!rest.empty() && !failed_) {
    const ssize_t written = ::write(output_, rest.data(), rest.size());
    if (written >= 0) rest.remove_prefix(static_cast<std::size_t>(written));
    failed_ = written < 0 && errno != EINTR;
  }
  const RunTimeError error = FromSystemError(errno);
  pending_.clear();
  if (failed_) throw error;
}

int SharedFile::Close() {
  if (output_ >= 0) FinishWriting();
  CloseDescriptors();
  return std::exchange(replacedCharacters_, 0);
}

/// The former content goes only when the new one is on the disk.
void SharedFile::FinishWriting() {
  if (failed_) throw MakeRunTimeError(error_number::kDiskFull);
  Flush();
  if (!former_.empty() && ::fsync(output_) != 0) ThrowSystemError();
  if (::close(std::exchange(output_, -1)) != 0) ThrowSystemError();
  if (!former_.empty()) ::unlink(former_.c_str());
  former_.clear();
}

void SharedFile::Abandon() {
  try {
    if (output_ >= 0) Flush();
  } catch (const RunTimeError&) {
    failed_ = true;  // the error that led here has been told; what is written stays
  }
  CloseDescriptors();
  replacedCharacters_ = 0;
}

void SharedFile::CloseDescriptors() {
  if (input_ >= 0) ::close(input_);
  if (output_ >= 0) ::close(output_);
  input_ = -1;
  output_ = -1;
  failed_ = false;
}

}  // namespace polefit

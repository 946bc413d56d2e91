#include "platform/shared_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/run_time_error.h"
#include "platform/text.h"

namespace polefit {

namespace {

constexpr std::size_t kChunkSize = 1U << 16U;
constexpr unsigned kNewFileMode = 0666;

[[noreturn]] void ThrowSystemError() {
  throw FromSystemError(errno);
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
  if (input_ < 0) ThrowSystemError();
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

void SharedFile::SetFormerAside(const std::string& path) {
  struct stat own {};
  if (::lstat(path.c_str(), &own) != 0) return;
  struct stat content {};
  const bool reached = ::stat(path.c_str(), &content) == 0;
  if (reached && !S_ISREG(content.st_mode)) return;  // a device or a pipe has no former content
  if (S_ISREG(own.st_mode)) targetMode_ = own.st_mode & 07777U;
  std::string aside = path + "~";
  while (SomethingIsAt(aside)) aside += '~';
  if (::rename(path.c_str(), aside.c_str()) != 0) ThrowSystemError();
  former_ = aside;
}

void SharedFile::CreateTarget(const std::string& path) {
  output_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, targetMode_);
  if (output_ < 0) {
    const RunTimeError error = FromSystemError(errno, error_number::kPathNotFound);
    if (!former_.empty()) ::rename(former_.c_str(), path.c_str());
    throw error;
  }
  if (!former_.empty()) ::fchmod(output_, targetMode_);
}

void SharedFile::OpenForWriting(const std::string& path) {
  RequireClosed();
  former_.clear();
  targetMode_ = kNewFileMode;
  SetFormerAside(path);
  CreateTarget(path);
  pending_.clear();
  replacedCharacters_ = 0;
}

void SharedFile::WriteLine(std::string_view line) {
  if (output_ < 0) throw MakeRunTimeError(error_number::kBadFileNumber);
  replacedCharacters_ += AppendToWindows1252(line, pending_);
  pending_ += "\r\n";
  if (pending_.size() >= kChunkSize) Flush();
}

void SharedFile::Flush() {
  std::string_view rest = pending_;
  while (!rest.empty()) {
    const ssize_t written = ::write(output_, rest.data(), rest.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      ThrowSystemError();
    }
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
  pending_.clear();
}

int SharedFile::Close() {
  if (output_ >= 0) {
    Flush();
    const int descriptor = output_;
    output_ = -1;
    if (::close(descriptor) != 0) ThrowSystemError();
    if (!former_.empty()) ::unlink(former_.c_str());
  }
  CloseDescriptors();
  return std::exchange(replacedCharacters_, 0);
}

void SharedFile::Abandon() {
  try {
    if (output_ >= 0) Flush();
  } catch (const RunTimeError&) {
    pending_.clear();  // the disk has no room for the rest; what is written stays
  }
  CloseDescriptors();
}

void SharedFile::CloseDescriptors() {
  if (input_ >= 0) ::close(input_);
  if (output_ >= 0) ::close(output_);
  input_ = -1;
  output_ = -1;
}

}  // namespace polefit

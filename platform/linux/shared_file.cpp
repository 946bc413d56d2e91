#include "platform/linux/shared_file.h"

#include <utility>

#include "base/line_source.h"
#include "base/run_time_error.h"
#include "base/text.h"
#include "platform/linux/file_reading.h"

namespace polefit {

void SharedFile::RequireClosed() const {
  if (input_.IsOpen() || output_.IsOpen()) throw MakeRunTimeError(error_number::kFileAlreadyOpen);
}

void SharedFile::OpenForReading(const std::string& path) {
  RequireClosed();
  input_ = OpenRegularFile(path);
  inputBuffer_.clear();
  inputAt_ = 0;
  bytesRead_ = 0;
  linesRead_ = 0;
}

/// Reads on behind what is left of the buffer; false at the end of the file.
bool SharedFile::FillInput() {
  inputBuffer_.erase(0, std::exchange(inputAt_, 0));
  const std::size_t length = ReadOn(input_, inputBuffer_, kChunkSize);
  bytesRead_ += length;
  if (bytesRead_ > kLargestFile) throw TooLarge();
  return length > 0;
}

/// The next line with its end.
std::string_view SharedFile::TakeLine() {
  std::size_t end = inputBuffer_.find('\n', inputAt_);
  while (end == std::string::npos) {
    const std::size_t searched = inputBuffer_.size() - inputAt_;
    // A line that is too long already need not be read to its end.
    if (searched > kLongestLine || !FillInput()) break;
    end = inputBuffer_.find('\n', searched);
  }
  const std::size_t start = inputAt_;
  inputAt_ = end == std::string::npos ? inputBuffer_.size() : end + 1;
  if (inputAt_ == start) throw MakeRunTimeError(error_number::kInputPastEndOfFile);
  return std::string_view(inputBuffer_).substr(start, inputAt_ - start);
}

std::string_view SharedFile::ReadLine() {
  if (!input_.IsOpen()) throw MakeRunTimeError(error_number::kBadFileNumber);
  const std::string_view bytes = TakeLine();
  ++linesRead_;
  if (bytes.size() > kLongestLine) throw TooLarge();
  return FromWindows1252(WithoutLineEnd(bytes), line_);
}

void SharedFile::OpenForWriting(const std::string& path, Saving way) {
  RequireClosed();
  pending_.clear();
  replacedCharacters_ = 0;
  output_.Open(path, way);
}

void SharedFile::WriteLine(std::string_view line) {
  if (!output_.IsOpen()) throw MakeRunTimeError(error_number::kBadFileNumber);
  pending_ += line;
  pending_ += "\r\n";
  if (pending_.size() >= kChunkSize) Flush();
}

/// What could not be written is dropped, so that nothing sends it twice.
void SharedFile::Flush() {
  const std::string lines = std::exchange(pending_, {});
  output_.Write(ToWindows1252(lines, bytes_, replacedCharacters_));
}

int SharedFile::Close() {
  input_.Close();
  if (output_.IsOpen()) {
    Flush();
    output_.Close();
  }
  return std::exchange(replacedCharacters_, 0);
}

void SharedFile::Abandon() {
  input_.Close();
  try {
    if (output_.IsOpen()) Flush();
  } catch (const RunTimeError&) {
    // The error that led here has been told; what is written stays.
  }
  output_.Abandon();
  pending_.clear();
  replacedCharacters_ = 0;
}

}  // namespace polefit

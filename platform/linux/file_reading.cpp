#include "platform/linux/file_reading.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "base/run_time_error.h"
#include "platform/paths.h"

namespace polefit {

namespace {

RunTimeError NoRegularFile() {
  RunTimeError error = MakeRunTimeError(error_number::kPathFileAccessError);
  error.reason = "It is a folder, a pipe or a device, not a file";
  return error;
}

/// What a missing file is called: its folder may be missing too.
int MissingNumber(const std::string& path) {
  const bool folderIsThere = ::access(FolderOf(path).c_str(), F_OK) == 0;
  return folderIsThere ? error_number::kFileNotFound : error_number::kPathNotFound;
}

Descriptor OpenRegular(const std::string& path, std::uint64_t& size) {
  Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!file.IsOpen()) {
    if (errno == ENXIO) throw NoRegularFile();  // a socket has no reading end at all
    throw FromSystemError(errno, MissingNumber(path));
  }
  struct stat status {};
  if (::fstat(file.Number(), &status) != 0) throw FromSystemError(errno);
  if (!S_ISREG(status.st_mode)) throw NoRegularFile();
  size = static_cast<std::uint64_t>(status.st_size);
  return file;
}

}  // namespace

RunTimeError TooLarge() {
  RunTimeError error = MakeRunTimeError(error_number::kOutOfMemory);
  error.reason = "It is larger than 64 MB or has a line of more than 1 MB";
  return error;
}

Descriptor OpenRegularFile(const std::string& path) {
  std::uint64_t size = 0;
  Descriptor file = OpenRegular(path, size);
  if (size > kLargestFile) throw TooLarge();
  return file;
}

std::size_t ReadOn(const Descriptor& file, std::string& to, std::size_t most) {
  const std::size_t held = to.size();
  to.resize(held + most);
  ssize_t length = 0;
  do {
    length = ::read(file.Number(), to.data() + held, most);
  } while (length < 0 && errno == EINTR);
  to.resize(held + static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
  if (length < 0) throw FromSystemError(errno);
  return static_cast<std::size_t>(length);
}

std::string WholeFile(const std::string& path, std::size_t most) {
  const Descriptor file = OpenRegularFile(path);
  std::string bytes;
  while (ReadOn(file, bytes, kChunkSize) > 0) {
    if (bytes.size() > most) throw TooLarge();
  }
  return bytes;
}

std::string PartOfFile(const std::string& path, std::uint64_t offset, std::size_t most) {
  std::uint64_t size = 0;
  const Descriptor file = OpenRegular(path, size);
  if (::lseek(file.Number(), static_cast<off_t>(offset), SEEK_SET) < 0) {
    throw FromSystemError(errno);
  }
  std::string bytes;
  while (bytes.size() < most && ReadOn(file, bytes, most - bytes.size()) > 0) {
  }
  return bytes;
}

}  // namespace polefit

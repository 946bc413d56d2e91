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

/// What a missing file is called: its folder may be missing too.
int MissingNumber(const std::string& path) {
  const bool folderIsThere = ::access(FolderOf(path).c_str(), F_OK) == 0;
  return folderIsThere ? error_number::kFileNotFound : error_number::kPathNotFound;
}

Descriptor OpenRegular(const std::string& path, std::uint64_t& size) {
  Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!file.IsOpen()) {
    // A socket has no reading end at all.
    throw FromSystemError(errno == ENXIO ? EISDIR : errno, MissingNumber(path));
  }
  struct stat status {};
  if (::fstat(file.Number(), &status) != 0) throw FromSystemError(errno);
  if (!S_ISREG(status.st_mode)) throw MakeRunTimeError(error_number::kPathFileAccessError);
  size = static_cast<std::uint64_t>(status.st_size);
  return file;
}

}  // namespace

Descriptor OpenRegularFile(const std::string& path) {
  std::uint64_t size = 0;
  Descriptor file = OpenRegular(path, size);
  if (size > kLargestFile) throw MakeRunTimeError(error_number::kOutOfMemory);
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
    if (bytes.size() > most) throw MakeRunTimeError(error_number::kOutOfMemory);
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

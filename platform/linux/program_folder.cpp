#include "platform/linux/program_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#include "base/run_time_error.h"

namespace polefit {

namespace {

/// Whether the opened file is still the one at `path`: its holder removes it at its end.
bool IsStillAt(int descriptor, const std::string& path) {
  struct stat opened {};
  struct stat named {};
  return ::fstat(descriptor, &opened) == 0 && ::stat(path.c_str(), &named) == 0 &&
         opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

}  // namespace

RunTimeError InSystemWords(int systemError) {
  const int number = FromSystemError(systemError, error_number::kPathNotFound).number;
  return {number, std::generic_category().message(systemError)};
}

RunLock::RunLock(int descriptor, std::string path)
    : descriptor_(descriptor), path_(std::move(path)) {}

RunLock::RunLock(RunLock&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), path_(std::move(other.path_)) {}

RunLock::~RunLock() {
  if (descriptor_ < 0) return;
  ::unlink(path_.c_str());  // before the lock is gone, so that it is surely ours
  ::close(descriptor_);
}

std::optional<RunLock> RunLock::Take(const std::string& path) {
  constexpr unsigned kMode = 0666;
  while (true) {
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, kMode);
    if (descriptor < 0) throw InSystemWords(errno);
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
      ::close(descriptor);
      return std::nullopt;
    }
    // Between open and lock the former holder may have removed the file; then another run would
    // lock a new one.
    if (IsStillAt(descriptor, path)) return RunLock(descriptor, path);
    ::close(descriptor);
  }
}

void RenameFile(const std::string& from, const std::string& to) {
  if (std::rename(from.c_str(), to.c_str()) != 0) {
    throw InSystemWords(errno);
  }
}

void RemoveFile(Host& host, const std::string& path) {
  try {
    host.DeleteFile(path);
  } catch (const RunTimeError& error) {
    if (error.number != error_number::kFileNotFound) throw;
  }
}

}  // namespace polefit

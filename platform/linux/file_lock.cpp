#include "platform/linux/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <thread>
#include <utility>

#include "base/run_time_error.h"
#include "platform/linux/descriptor.h"

namespace polefit {

namespace {

class FileLock final : public HeldLock {
 public:
  /// `path` is the file that goes with the lock, or empty.
  FileLock(Descriptor held, std::string path) : held_(std::move(held)), path_(std::move(path)) {}
  // Removed before the lock is gone, so that the file is surely ours.
  ~FileLock() override {
    if (!path_.empty()) ::unlink(path_.c_str());
  }
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

 private:
  Descriptor held_;
  std::string path_;
};

bool IsFolder(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

Descriptor OpenToLock(const std::string& path, bool isFolder) {
  constexpr mode_t kMode = 0666;
  const int how = isFolder ? O_RDONLY | O_DIRECTORY : O_RDWR | O_CREAT | O_NONBLOCK;
  Descriptor opened(::open(path.c_str(), how | O_NOFOLLOW | O_CLOEXEC, kMode));
  if (!opened.IsOpen()) throw InSystemWords(errno);
  return opened;
}

/// Whether the opened file is still the one at `path`: its holder removes it at its end.
bool IsStillAt(const Descriptor& file, const std::string& path) {
  struct stat opened {};
  struct stat named {};
  return ::fstat(file.Number(), &opened) == 0 && ::lstat(path.c_str(), &named) == 0 &&
         opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

}  // namespace

std::unique_ptr<HeldLock> TakeFileLock(const std::string& path,
                                       std::chrono::milliseconds patience) {
  constexpr std::chrono::milliseconds kPause(20);
  const bool isFolder = IsFolder(path);
  const auto end = std::chrono::steady_clock::now() + patience;
  while (true) {
    Descriptor opened = OpenToLock(path, isFolder);
    const bool isTaken = ::flock(opened.Number(), LOCK_EX | LOCK_NB) == 0;
    // Between open and lock the former holder may have removed the file; then another would lock a
    // new one.
    if (isTaken && IsStillAt(opened, path)) {
      return std::make_unique<FileLock>(std::move(opened), isFolder ? "" : path);
    }
    if (isTaken) continue;
    if (errno != EWOULDBLOCK) throw InSystemWords(errno);
    if (std::chrono::steady_clock::now() >= end) return nullptr;
    std::this_thread::sleep_for(kPause);
  }
}

}  // namespace polefit

#include "platform/linux/safe_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "base/run_time_error.h"
#include "platform/paths.h"

namespace polefit {

namespace {

constexpr mode_t kUsualMode = 0666;
constexpr mode_t kOwnerMode = 0600;
constexpr mode_t kPermissionBits = 07777;

[[noreturn]] void ThrowSystemError() {
  throw FromSystemError(errno, error_number::kPathNotFound);
}

/// A name of its own in the same folder, for content that is not complete yet.
std::string NameOfNew(const std::string& path) {
  return path + ".new";
}

/// A rename is safe from a power failure only when the folder is on the disk too. Folders that may
/// not be read, and file systems that cannot sync one, go without.
void SyncFolder(const std::string& path) {
  const Descriptor folder(::open(FolderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder.IsOpen()) {
    if (errno == EACCES) return;
    ThrowSystemError();
  }
  if (::fsync(folder.Number()) != 0 && errno != EINVAL && errno != ENOTSUP) ThrowSystemError();
}

/// What lies under a name of this kind already, from a crash or an editor, is not ours to replace.
std::string FreeNameBeside(const std::string& path) {
  std::string name = path + "~";
  struct stat status {};
  while (::lstat(name.c_str(), &status) == 0) name += '~';
  if (errno != ENOENT) ThrowSystemError();
  return name;
}

void Rename(const std::string& from, const std::string& to) {
  if (std::rename(from.c_str(), to.c_str()) != 0) ThrowSystemError();
}

}  // namespace

std::optional<SafeFile::Identity> SafeFile::IdentityAt(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) return std::nullopt;
  return Identity{status.st_dev, status.st_ino};
}

void SafeFile::Open(const std::string& path, Saving way, Readers readers) {
  failure_.reset();
  isDevice_ = false;
  if (ContinuesTornFile(path, way)) {
    OpenTorn();
    return;
  }
  way_ = way;
  target_ = path;
  formerMode_.reset();
  unfinished_ = {};
  if (OpenDevice(path)) return;
  unfinished_.path = way == Saving::whole ? NameOfNew(path) : path;
  TakeFormer(path);
  Create(readers);
}

bool SafeFile::ContinuesTornFile(const std::string& path, Saving way) {
  return way == Saving::aside && way_ == way && !unfinished_.aside.empty() &&
         path == unfinished_.path && IdentityAt(path) == unfinished_.made &&
         IdentityAt(unfinished_.aside) == unfinished_.former;
}

void SafeFile::OpenTorn() {
  output_ = Descriptor(::open(target_.c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC));
  if (!output_.IsOpen() || ::ftruncate(output_.Number(), 0) != 0) ThrowSystemError();
}

/// What has no content to keep is written as it stands. False when that is not so.
bool SafeFile::OpenDevice(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0 || S_ISREG(status.st_mode)) return false;
  // A pipe that nobody reads would wait for a reader.
  output_ = Descriptor(::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  const bool isRefused = !output_.IsOpen() || ::fcntl(output_.Number(), F_SETFL, O_WRONLY) != 0;
  if (isRefused) throw FromSystemError(errno == ENXIO ? EISDIR : errno);
  isDevice_ = true;
  return true;
}

void SafeFile::TakeFormer(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) {
    if (errno == ENOENT) return;
    ThrowSystemError();
  }
  if (S_ISREG(status.st_mode)) {
    // The rename alone would pass over a write-protected file without a word.
    if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) ThrowSystemError();
    formerMode_ = status.st_mode & kPermissionBits;
  }
  if (way_ == Saving::whole) return;
  const std::string aside = FreeNameBeside(path);
  Rename(path, aside);
  unfinished_.aside = aside;
  unfinished_.former = {status.st_dev, status.st_ino};
}

void SafeFile::Create(Readers readers) {
  const bool isGuarded = formerMode_ || readers == Readers::ownerOnly;
  // Only what an earlier save left under a name that is nobody else's.
  if (way_ == Saving::whole) ::unlink(unfinished_.path.c_str());
  try {
    output_ = Descriptor(::open(unfinished_.path.c_str(),
                                O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                                isGuarded ? kOwnerMode : kUsualMode));
    struct stat status {};
    if (!output_.IsOpen() || ::fstat(output_.Number(), &status) != 0) ThrowSystemError();
    unfinished_.made = {status.st_dev, status.st_ino};
    SetFormerMode();
  } catch (const RunTimeError&) {
    if (output_.IsOpen()) ::unlink(unfinished_.path.c_str());
    output_.Close();
    if (!unfinished_.aside.empty() && !IdentityAt(target_)) {
      std::rename(unfinished_.aside.c_str(), target_.c_str());
    }
    unfinished_ = {};
    throw;
  }
}

/// File systems without permissions refuse to set any.
void SafeFile::SetFormerMode() {
  if (!formerMode_ || ::fchmod(output_.Number(), *formerMode_) == 0) return;
  if (errno != EPERM && errno != ENOTSUP && errno != ENOSYS) ThrowSystemError();
}

void SafeFile::Write(std::string_view bytes) {
  while (!bytes.empty() && !failure_) {
    const ssize_t written = ::write(output_.Number(), bytes.data(), bytes.size());
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
    if (written == 0) failure_ = MakeRunTimeError(error_number::kDiskFull);
    if (written < 0 && errno != EINTR) failure_ = FromSystemError(errno);
  }
  if (failure_) throw *failure_;
}

void SafeFile::Close() {
  if (!IsOpen()) return;
  try {
    if (failure_) throw *failure_;
    if (!isDevice_ && ::fsync(output_.Number()) != 0) ThrowSystemError();
    if (output_.Close() != 0) ThrowSystemError();
    if (isDevice_) return;
    if (way_ == Saving::whole) {
      FinishWhole();
    } else {
      FinishAside();
    }
  } catch (const RunTimeError&) {
    Abandon();
    throw;
  }
}

/// The former content goes only when the new one, and its name, are on the disk.
void SafeFile::FinishAside() {
  SyncFolder(target_);
  if (!unfinished_.aside.empty()) ::unlink(unfinished_.aside.c_str());
  unfinished_ = {};
}

void SafeFile::FinishWhole() {
  // Another program may have made a file of this name its own.
  if (IdentityAt(unfinished_.path) != unfinished_.made) {
    throw MakeRunTimeError(error_number::kPathFileAccessError);
  }
  Rename(unfinished_.path, target_);
  unfinished_ = {};
  SyncFolder(target_);
}

void SafeFile::Abandon() {
  output_.Close();
  if (way_ == Saving::whole) Discard();
}

void SafeFile::Discard() {
  if (!unfinished_.path.empty() && IdentityAt(unfinished_.path) == unfinished_.made) {
    ::unlink(unfinished_.path.c_str());
  }
  unfinished_ = {};
}

void ReplaceFileSafely(const std::string& path, std::string_view bytes, Readers readers) {
  SafeFile file;
  file.Open(path, Saving::whole, readers);
  file.Write(bytes);
  file.Close();
}

void MoveFileSafely(const std::string& from, const std::string& to) {
  Rename(from, to);
  SyncFolder(to);
}

}  // namespace polefit

#include "platform/linux/system_faults.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "base/run_time_error.h"

namespace polefit::testing {

const std::vector<std::string> kFileCalls = {"open",   "write",  "fsync",    "close",
                                             "rename", "unlink", "lstat",    "fchmod",
                                             "fstat",  "stat",   "faccessat"};

namespace {

SystemFault armed;
bool isArmed = false;
int due = 0;
std::vector<std::string> calls;

/// Notes a call; true when it is to fail.
bool IsStruck(const char* call) {
  if (!isArmed) return false;
  calls.emplace_back(call);
  if (!armed.call.empty() && armed.call != call) return false;
  if (--due != 0) return false;
  if (armed.isEnd) ::kill(::getpid(), SIGKILL);
  errno = armed.error;
  return true;
}

}  // namespace

bool RunUnder(const SystemFault& fault, const std::function<void()>& action) {
  armed = fault;
  due = fault.at;
  calls.clear();
  isArmed = true;
  try {
    action();
  } catch (const RunTimeError&) {
    // What is on the disk then is what the caller looks at.
  }
  isArmed = false;
  return due <= 0;
}

std::vector<std::string> CallsOf(const std::function<void()>& action) {
  RunUnder({"none"}, action);
  return calls;
}

}  // namespace polefit::testing

using polefit::testing::IsStruck;

// The names that the linker gives the calls that it leads here, and the true ones.
int RealOpen(const char*, int, ...) asm("__real_open");
int FaultyOpen(const char* path, int how, mode_t mode) asm("__wrap_open");
ssize_t RealWrite(int, const void*, size_t) asm("__real_write");
ssize_t FaultyWrite(int file, const void* bytes, size_t count) asm("__wrap_write");
int FaultyFsync(int file) asm("__wrap_fsync");
int RealClose(int) asm("__real_close");
int FaultyClose(int file) asm("__wrap_close");
int RealRename(const char*, const char*) asm("__real_rename");
int FaultyRename(const char* from, const char* to) asm("__wrap_rename");
int RealUnlink(const char*) asm("__real_unlink");
int FaultyUnlink(const char* path) asm("__wrap_unlink");
int RealLstat(const char*, struct stat*) asm("__real_lstat");
int FaultyLstat(const char* path, struct stat* status) asm("__wrap_lstat");
int RealStat(const char*, struct stat*) asm("__real_stat");
int FaultyStat(const char* path, struct stat* status) asm("__wrap_stat");
int RealFstat(int, struct stat*) asm("__real_fstat");
int FaultyFstat(int file, struct stat* status) asm("__wrap_fstat");
int RealFchmod(int, mode_t) asm("__real_fchmod");
int FaultyFchmod(int file, mode_t mode) asm("__wrap_fchmod");
int RealFaccessat(int, const char*, int, int) asm("__real_faccessat");
int FaultyFaccessat(int folder, const char* path, int mode, int flags) asm("__wrap_faccessat");

int FaultyOpen(const char* path, int how, mode_t mode) {
  return IsStruck("open") ? -1 : RealOpen(path, how, mode);
}
ssize_t FaultyWrite(int file, const void* bytes, size_t count) {
  return IsStruck("write") ? -1 : RealWrite(file, bytes, count);
}
int FaultyFsync(int /*file*/) {
  // No test cuts the power, and a disk takes its time.
  return IsStruck("fsync") ? -1 : 0;
}
int FaultyClose(int file) {
  // A close that fails has closed the file all the same.
  const bool isStruck = IsStruck("close");
  const int error = errno;
  const int result = RealClose(file);
  errno = error;
  return isStruck ? -1 : result;
}
int FaultyRename(const char* from, const char* to) {
  return IsStruck("rename") ? -1 : RealRename(from, to);
}
int FaultyUnlink(const char* path) {
  return IsStruck("unlink") ? -1 : RealUnlink(path);
}
int FaultyLstat(const char* path, struct stat* status) {
  return IsStruck("lstat") ? -1 : RealLstat(path, status);
}
int FaultyStat(const char* path, struct stat* status) {
  return IsStruck("stat") ? -1 : RealStat(path, status);
}
int FaultyFstat(int file, struct stat* status) {
  return IsStruck("fstat") ? -1 : RealFstat(file, status);
}
int FaultyFchmod(int file, mode_t mode) {
  return IsStruck("fchmod") ? -1 : RealFchmod(file, mode);
}
int FaultyFaccessat(int folder, const char* path, int mode, int flags) {
  return IsStruck("faccessat") ? -1 : RealFaccessat(folder, path, mode, flags);
}

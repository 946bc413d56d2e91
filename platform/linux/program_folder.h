#pragma once

#include <optional>
#include <string>

#include "platform/host.h"

namespace polefit {

/// The run-time error for an errno value, described in the system's words.
RunTimeError InSystemWords(int systemError);

/// The lock on a run's output files, released however the process ends.
class RunLock {
 public:
  /// Takes the lock on the file at `path`, or returns nothing when another run has it. Throws
  /// RunTimeError when the file cannot be made.
  static std::optional<RunLock> Take(const std::string& path);

  RunLock(RunLock&& other) noexcept;
  RunLock& operator=(RunLock&&) = delete;
  ~RunLock();

 private:
  RunLock(int descriptor, std::string path);

  int descriptor_;
  std::string path_;
};

/// Gives a file that is complete its place; throws RunTimeError.
void RenameFile(const std::string& from, const std::string& to);

/// Removes a file; that it is not there is no error.
void RemoveFile(Host& host, const std::string& path);

}  // namespace polefit

#pragma once

#include <functional>
#include <string>
#include <vector>

namespace polefit::testing {

/// What the next system calls of the file kind do: the linker leads this test program's calls of
/// them through here.
struct SystemFault {
  /// The call that is struck, or "" for any.
  std::string call;
  /// Which one of them, from 1.
  int at = 1;
  int error = 0;
  /// Whether the process ends there, as by a kill, and the call is not made.
  bool isEnd = false;
};

/// Runs `action` under the fault; false when it came to an end before the fault was due. Errors
/// that it throws are its own matter.
bool RunUnder(const SystemFault& fault, const std::function<void()>& action);

/// The calls that `action` makes, in order.
std::vector<std::string> CallsOf(const std::function<void()>& action);

/// The calls that can be struck.
extern const std::vector<std::string> kFileCalls;

}  // namespace polefit::testing

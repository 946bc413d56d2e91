#pragma once

#include <memory>
#include <string>

#include "form/state.h"

namespace polefit {

/// What one window works with, so that a second one can say so.
struct WindowClaim {
  /// Holds the claim; null where another window has it, or nothing can be claimed.
  std::unique_ptr<HeldLock> lock;
  bool isTaken = false;  ///< by another window
};

/// Claims the file at `path`, which is resolved, for as long as the result's lock lives. `kind`
/// parts claims of one file for different ends.
WindowClaim ClaimForWindow(Host& host, const std::string& kind, const std::string& path);

/// Claims the program folder for this window, as long as the result lives. When another window has
/// it, a notice says so and the result is null; so it is where nothing can be claimed.
std::unique_ptr<HeldLock> ClaimProgramFolder(Program& program);

}  // namespace polefit

#pragma once

#include <memory>

#include "form/state.h"

namespace polefit {

/// Claims the program folder for this window, as long as the result lives. When another window has
/// it, a notice says so and the result is null; so it is where nothing can be claimed.
std::unique_ptr<HeldLock> ClaimProgramFolder(Program& program);

}  // namespace polefit

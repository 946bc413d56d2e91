#pragma once

#include "form/state.h"

namespace polefit {

/// Prepares the first moment of the program: no run folder yet, its own folder the current one if
/// it is there. True when this is a first start, which the introduction opens.
bool WantsIntroduction(Program& program);

}  // namespace polefit

#pragma once

#include "form/state.h"

namespace polefit {

/// Where users share an installation: makes this user's base and program folder and puts into them
/// what was shipped and is not there yet, the start file, the examples and a link to the manual.
/// What cannot be made is told with its path and the reason.
void PrepareOwnFolders(Program& program);

}  // namespace polefit

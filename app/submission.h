#pragma once

#include "form/state.h"

namespace polefit {

/// Submits the form as a run: saves it, asks what must be asked, and starts the solver with it.
/// In mode "Demo" the current file of the "User" folder is run as it stands.
void SubmitRun(Program& program);

}  // namespace polefit

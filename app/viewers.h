#pragma once

#include "form/state.h"

namespace polefit {

/// Opens an example that the user chooses in the text editor.
void ViewExampleFile(Program& program);

/// Opens the solver's report, or says that there is none.
void ViewLastOutput(Program& program);

void OpenManual(Program& program);

/// Starts the mail client with a prepared message and waits for its end. Error 53, when there is
/// no mail client, is passed on.
void EmailSupport(Program& program);

}  // namespace polefit

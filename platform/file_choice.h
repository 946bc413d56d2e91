#pragma once

#include <string>

#include "platform/host.h"

namespace polefit {

/// Asks by ShowOpen or ShowSave for a file that is not to be the current one; "" when the dialog is
/// given up. The process stays in its folder, where Save looks for the current file; an accepted
/// dialog alone would leave it in the chosen one.
std::string ChooseOtherFile(Host& host, CommonDialog dialog, void (Host::*show)(CommonDialog&));

}  // namespace polefit

#pragma once

#include <string>

#include "platform/host.h"

namespace polefit {

/// Shows a message with a numeric style over the active window and waits for the button. Escape
/// and the close box answer as the button that declines, or OK when there is only that.
Answer ShowMessageBox(const std::string& text, int style, const std::string& title);

}  // namespace polefit

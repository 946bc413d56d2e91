#pragma once

#include <cstddef>
#include <string>

#include "platform/host.h"

namespace polefit {

/// Shows a message with a numeric style over the active window and waits for the button. Escape
/// and the close box answer as the button that declines, or OK when there is only that.
Reply ShowMessageBox(const std::string& text, int style, const std::string& title);

/// Asks with the choice's own buttons; the index of the one pressed. Escape and the close box
/// answer as the last one.
std::size_t ShowChoice(const Choice& choice);

}  // namespace polefit

#pragma once

#include <string>

namespace polefit {

/// Shows a text file in a window of our own, for desktops that have no program for it. Rich text
/// is shown as its bare text. The window deletes itself when it is closed. Error 53 when the file
/// cannot be read.
void ShowPlainViewer(const std::string& path);

}  // namespace polefit

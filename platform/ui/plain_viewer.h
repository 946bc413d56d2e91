#pragma once

#include <string>

namespace polefit {

/// Shows the content of a text file in a window of our own, for desktops that have no program for
/// it. Rich text is shown as its bare text. The window deletes itself when it is closed.
void ShowPlainViewer(const std::string& path, const std::string& bytes);

}  // namespace polefit

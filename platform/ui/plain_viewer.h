#pragma once

#include <string>

class QPlainTextEdit;
class QString;

namespace polefit {

/// A page with text that can be selected but not changed, in letters of one width; long lines go on
/// beyond its edge. A screen reader calls it `name`.
QPlainTextEdit* MakeTextPage(const QString& text, const QString& name);

/// Shows the content of a text file in a window of our own, for desktops that have no program for
/// it. Rich text is shown as its bare text. The window deletes itself when it is closed.
void ShowPlainViewer(const std::string& path, const std::string& bytes);

}  // namespace polefit

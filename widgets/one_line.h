#pragma once

#include <QLineEdit>

namespace polefit {

/// Lets pasted line breaks and tabs come in as blanks: an answer and a cell are one line of the
/// file, in which a tab has no place.
void KeepToOneLine(QLineEdit& box);

/// Shows a text as it stands, line breaks and all.
void ShowAsItStands(QLineEdit& box, const QString& text);

}  // namespace polefit

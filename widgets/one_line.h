#pragma once

#include <QLineEdit>

namespace polefit {

/// Lets pasted line breaks come in as blanks: an answer and a cell are one line of the file.
void KeepToOneLine(QLineEdit& box);

}  // namespace polefit

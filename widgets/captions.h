#pragma once

class QLabel;
class QString;

namespace polefit {

/// The large title line of a dialog.
QLabel* MakeTitle(const QString& text);

/// A wrapped sentence, about as wide as a book's line.
QLabel* MakeSentence(const char* name, const QString& text);

}  // namespace polefit

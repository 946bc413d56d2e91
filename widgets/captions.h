#pragma once

class QLabel;

namespace polefit {

/// The large title line of a dialog.
QLabel* MakeTitle(const char* text);

/// A wrapped sentence, about as wide as a book's line.
QLabel* MakeSentence(const char* name, const char* text);

}  // namespace polefit

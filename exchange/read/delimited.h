#pragma once

#include <string_view>

#include "exchange/read/layout.h"
#include "exchange/read/table.h"

namespace polefit {

/// How a text file is to be read; what is left at 0 is found out.
struct TextChoices {
  Layout layout = {0, 0};
  /// The number, from 1, of the line with the headings.
  int headingLine = 0;
};

/// What was found out or chosen.
struct TextLayout {
  Layout layout;
  int headingLine = 0;
  /// False when there are headings, but not as many as a row has cells.
  bool isSure = true;
};

/// Reads rows of numbers out of a text (UTF-8) with any lines before, between and behind them.
/// `found`, where given, receives how it was read.
SourceTable ReadDelimited(std::string_view text, const TextChoices& choices = {},
                          TextLayout* found = nullptr);

}  // namespace polefit

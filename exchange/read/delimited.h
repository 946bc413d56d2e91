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
  /// How many layouts of equal right there were is no question here, but whether the heading and
  /// the rows agree in their number of cells is.
  bool isSure = true;
};

/// Reads rows of numbers out of a text (UTF-8) with any lines before, between and behind them.
/// `found`, where given, receives how it was read.
SourceTable ReadDelimited(std::string_view text, const TextChoices& choices = {},
                          TextLayout* found = nullptr);

}  // namespace polefit

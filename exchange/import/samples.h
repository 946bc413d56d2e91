#pragma once

#include <string>
#include <vector>

#include "exchange/import/choices.h"

namespace polefit {

/// 3 dB as a ratio of magnitudes, 10^(3/20).
inline constexpr double kThreeDecibels = 1.4125375446227544;

/// A number with the text that it was in the file; the text is empty once it was calculated.
struct Amount {
  double value = 0;
  std::string text = {};
};

/// The text that goes into a table cell: as it was, or 9 significant digits without exponent.
std::string TextOf(const Amount& amount);

/// One row of the file, in the units of the program.
struct Sample {
  /// MHz.
  Amount frequency;
  /// Linear magnitudes.
  Amount value;
  Amount other;
  Amount weight;
  /// ns.
  Amount delay;
  /// The line of the file.
  int line = 0;
};

/// Rows of a file in the order of their frequencies, which rise.
struct Samples {
  std::vector<Sample> rows;
  /// Lines that were left out because a chosen cell holds no number.
  std::vector<int> skippedLines;
  std::vector<std::string> notes;
  /// Why there are none, or empty.
  std::string fault;
};

/// Takes the chosen columns in the program's units from the first to the last frequency wanted,
/// both counted in, sorts by frequency and keeps the first of those at one frequency. A delay from
/// phase is calculated over all these rows.
Samples TakeSamples(const SourceTable& table, const ImportChoices& choices);

/// The number that stands for a magnitude in a row; NaN where a cell holds none.
Amount Magnitude(const SourceTable& table, int row, const ValueColumn& value);

/// 20 log10; minus infinity for 0.
double Decibel(double magnitude);

}  // namespace polefit

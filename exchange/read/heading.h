#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "exchange/read/units.h"

namespace polefit {

/// What the numbers of a column are.
enum class Quantity {
  unknown,
  frequency,
  linear,
  decibel,
  real,
  imaginary,
  angle,
  delay,
  weight,
  index
};

/// What a heading says of its column, as far as it says anything.
struct Meaning {
  Quantity quantity = Quantity::unknown;
  std::optional<FrequencyUnit> frequencyUnit = {};
  std::optional<DelayUnit> delayUnit = {};
  std::optional<AngleUnit> angleUnit = {};
};

/// Reads a heading as analysers, simulators and spreadsheets write them: "Frequency (GHz)",
/// "S21 dB", "freq_MHz", "re:Trc1_S21", "dB(S(2,1))", "Gruppenlaufzeit [ns]".
Meaning MeaningOf(std::string_view heading);

/// Whether a cell is nothing but a unit: "MHz", "[dB]", "(ns)".
bool IsUnit(std::string_view cell);

/// Letters and digits of a heading in lower case: "S(2,1)" and "s21" are the same.
std::string BareName(std::string_view heading);

}  // namespace polefit

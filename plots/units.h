#pragma once

#include <string>

namespace polefit {

/// A unit for the figures of an axis: a value in the base unit times `factor` is one in this unit.
struct Unit {
  const char* name = "";
  double factor = 1;
};

/// kHz, MHz or GHz for frequencies up to `largest` MHz; MHz for 0.
Unit UnitOfFrequencies(double largest);
/// ps, ns, µs, ms or s for times up to `largest` ns; ns for 0.
Unit UnitOfTimes(double largest);

/// A number for eyes with at most `digits` significant digits, without zeros at its end.
std::string Figure(double value, int digits);

/// A number of decibels: two decimals, more where it is small.
std::string DecibelFigure(double value);

/// "5.5 MHz": a frequency in MHz, in the unit that suits it.
std::string FrequencyText(double megahertz);
/// "75.3 ns"
std::string TimeText(double nanoseconds);

}  // namespace polefit

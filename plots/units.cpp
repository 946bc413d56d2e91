#include "plots/units.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/text_format.h"

namespace polefit {

Unit UnitOfFrequencies(double largest) {
  if (largest > 0 && largest < .9995) return {"kHz", 1e3};
  if (largest >= 999.5) return {"GHz", 1e-3};
  return {"MHz", 1};
}

Unit UnitOfTimes(double largest) {
  constexpr std::array<Unit, 5> kUnits = {
      {{"s", 1e-9}, {"ms", 1e-6}, {"\u00b5s", 1e-3}, {"ns", 1}, {"ps", 1e3}}};
  if (largest <= 0) return {"ns", 1};
  for (const Unit& unit : kUnits) {
    if (largest * unit.factor >= .9995) return unit;
  }
  return kUnits.back();
}

std::string Figure(double value, int digits) {
  if (value == 0) return "0";
  return Format("%.*g", digits, value);
}

std::string DecibelFigure(double value) {
  const double size = std::abs(value);
  if (size >= 99.95) return Format("%.1f", value);
  if (size >= .1) return Format("%.2f", value);
  return Figure(value, 2);
}

std::string FrequencyText(double megahertz) {
  const Unit unit = UnitOfFrequencies(std::abs(megahertz));
  return Figure(megahertz * unit.factor, 6) + " " + unit.name;
}

std::string TimeText(double nanoseconds) {
  const Unit unit = UnitOfTimes(std::abs(nanoseconds));
  return Figure(nanoseconds * unit.factor, 5) + " " + unit.name;
}

}  // namespace polefit

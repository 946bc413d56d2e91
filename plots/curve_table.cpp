#include "plots/curve_table.h"

#include <cmath>

#include "base/text_format.h"

namespace polefit {

namespace {

void AddCell(double value, std::string& line) {
  line += ',';
  if (std::isfinite(value)) line += Format("%.10g", value);
}

}  // namespace

std::string CurvesAsCsv(const ShownCurves& shown) {
  std::string text = "MHz";
  for (const FitCurves* const curves : shown) {
    text += "," + curves->name + " |H|," + curves->name + " Yin*|H|," + curves->name +
            " delay ns," + curves->name + " phase deg";
  }
  text += '\n';
  if (shown.empty()) return text;
  const std::vector<double>& megahertz = shown.front()->megahertz;
  std::vector<std::vector<double>> columns;
  for (const FitCurves* const curves : shown) {
    columns.push_back(curves->h->Magnitudes(megahertz));
    columns.push_back(curves->h->Obtained(megahertz));
    columns.push_back(curves->h->GroupDelays(megahertz));
    columns.push_back(curves->h->Phases(megahertz));
  }
  for (std::size_t i = 0; i < megahertz.size(); ++i) {
    std::string line = Format("%.10g", megahertz[i]);
    for (const std::vector<double>& column : columns) AddCell(column[i], line);
    text += line + '\n';
  }
  return text;
}

}  // namespace polefit

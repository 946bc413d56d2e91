#include "plots/curve_table.h"

#include <cmath>

#include "base/text_format.h"

namespace polefit {

namespace {

/// A name of a file may hold a comma.
std::string Quoted(const std::string& name) {
  if (name.find_first_of(",\"") == std::string::npos) return name;
  std::string quoted = "\"";
  for (const char sign : name) quoted += sign == '"' ? "\"\"" : std::string(1, sign);
  return quoted + '"';
}

void AddCell(double value, std::string& line) {
  line += ',';
  if (std::isfinite(value)) line += Format("%.10g", value);
}

}  // namespace

std::string CurvesAsCsv(const ShownCurves& shown) {
  std::string text = "MHz";
  for (const FitCurves* const curves : shown) {
    for (const char* const column : {" |H|", " Yin*|H|", " delay ns", " phase deg"}) {
      text += ',' + Quoted(curves->name + column);
    }
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

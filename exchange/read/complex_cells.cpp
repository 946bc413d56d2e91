#include "exchange/read/complex_cells.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "exchange/read/decoding.h"
#include "exchange/read/number_text.h"

namespace polefit {

namespace {

constexpr std::string_view kDegree = "\xC2\xB0";
/// So many lines are looked at for the first complex cell.
constexpr std::size_t kLinesForShape = 60;

struct ComplexCell {
  std::string_view first;
  std::string_view second;
  bool isPolar = false;
};

/// With a point or an exponent a number has no decimal comma, so that a comma behind it parts.
bool IsPointNumber(std::string_view text, bool mayBeWhole) {
  return !std::isnan(CellNumber(text, '.')) &&
         (mayBeWhole || text.find_first_of(".eE") != std::string_view::npos);
}

std::optional<ComplexCell> ParseComplex(std::string_view cell) {
  const bool inBrackets = cell.starts_with('(') && cell.ends_with(')');
  if (inBrackets) cell = cell.substr(1, cell.size() - 2);
  const std::size_t comma = cell.find(',');
  if (comma == std::string_view::npos) return std::nullopt;
  ComplexCell parts{TrimWhite(cell.substr(0, comma)), TrimWhite(cell.substr(comma + 1))};
  parts.isPolar = parts.first.ends_with("dB");
  if (parts.isPolar) parts.first.remove_suffix(2);
  if (parts.second.ends_with(kDegree)) parts.second.remove_suffix(kDegree.size());
  const bool mayBeWhole = inBrackets || parts.isPolar;
  if (!IsPointNumber(parts.first, mayBeWhole) || !IsPointNumber(parts.second, mayBeWhole)) {
    return std::nullopt;
  }
  return parts;
}

std::vector<std::string_view> CellsOfTabs(std::string_view line) {
  std::vector<std::string_view> cells;
  std::size_t end = 0;
  do {
    end = std::min(line.find('\t'), line.size());
    cells.push_back(TrimWhite(line.substr(0, end)));
    line.remove_prefix(std::min(end + 1, line.size()));
  } while (!line.empty());
  return cells;
}

/// The first line with a complex cell, cell by cell: nothing where the number is a plain one.
std::vector<std::optional<ComplexCell>> Pattern(const std::vector<std::string_view>& lines) {
  for (std::size_t i = 0; i < std::min(lines.size(), kLinesForShape); ++i) {
    if (lines[i].find('\t') == std::string_view::npos) continue;
    std::vector<std::optional<ComplexCell>> pattern;
    bool found = false;
    for (const std::string_view cell : CellsOfTabs(lines[i])) {
      pattern.push_back(ParseComplex(cell));
      found = found || pattern.back();
    }
    if (found) return pattern;
  }
  return {};
}

}  // namespace

std::string ComplexCellsAsColumns(std::string_view text) {
  const std::vector<std::string_view> lines = LinesOf(text);
  const auto pattern = Pattern(lines);
  if (pattern.empty()) return {};
  std::string rewritten;
  rewritten.reserve(text.size());
  for (const std::string_view line : lines) {
    const std::vector<std::string_view> cells = CellsOfTabs(line);
    for (std::size_t i = 0; i < cells.size(); ++i) {
      if (i > 0) rewritten += '\t';
      const auto value = ParseComplex(cells[i]);
      if (value) {
        rewritten.append(value->first).append("\t").append(value->second);
      } else if (i < pattern.size() && pattern[i] && !cells[i].empty()) {
        const bool polar = pattern[i]->isPolar;
        rewritten.append(cells[i]).append(polar ? " dB\t" : " re\t");
        rewritten.append(cells[i]).append(polar ? " deg" : " im");
      } else {
        rewritten += cells[i];
      }
    }
    rewritten += '\n';
  }
  return rewritten;
}

}  // namespace polefit

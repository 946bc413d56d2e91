#include "exchange/read/layout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "exchange/read/decoding.h"
#include "exchange/read/number_text.h"

namespace polefit {

namespace {

/// Tried in this order; of two that fit as many rows the first is taken.
constexpr std::array<Layout, 10> kLayouts = {{{'\t', '.'},
                                              {'\t', ','},
                                              {';', '.'},
                                              {';', ','},
                                              {'|', '.'},
                                              {'|', ','},
                                              {',', '.'},
                                              {' ', '.'},
                                              {' ', ','},
                                              {',', ','}}};

/// So many lines tell the layout of the largest file.
constexpr std::size_t kSample = 400;

bool IsSeparator(char c, char separator) {
  return separator == ' ' ? c == ' ' || c == '\t' : c == separator;
}

/// Takes a cell in quotes off the line; a quote that is not closed reaches to its end.
std::string_view TakeQuoted(std::string_view& line) {
  std::size_t end = line.find('"', 1);
  while (end != std::string_view::npos && line.substr(end + 1).starts_with('"')) {
    end = line.find('"', end + 2);
  }
  const std::string_view cell = line.substr(1, end == std::string_view::npos ? end : end - 1);
  line.remove_prefix(end == std::string_view::npos ? line.size() : end + 1);
  return TrimWhite(cell);
}

std::string_view TakeCell(std::string_view& line, char separator) {
  const std::size_t begin =
      std::min(line.find_first_not_of(separator == '\t' ? " " : " \t"), line.size());
  line.remove_prefix(begin);
  if (line.starts_with('"')) {
    const std::string_view cell = TakeQuoted(line);
    while (!line.empty() && !IsSeparator(line.front(), separator)) line.remove_prefix(1);
    return cell;
  }
  std::size_t end = 0;
  while (end < line.size() && !IsSeparator(line[end], separator)) ++end;
  const std::string_view cell = TrimWhite(line.substr(0, end));
  line.remove_prefix(end);
  return cell;
}

/// The lines that may be rows, or an even choice of them where there are many.
std::vector<std::string_view> SampleOf(const std::vector<std::string_view>& lines) {
  std::vector<std::string_view> sample;
  const std::size_t step = std::max<std::size_t>(1, lines.size() / kSample);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i < kSample || i % step == 0) sample.push_back(WithoutComment(lines[i]));
  }
  return sample;
}

/// How many lines have the commonest number of cells, and that number.
struct Score {
  int rows = 0;
  std::size_t cells = 0;
};

template <typename Judge>
Score ScoreOf(const std::vector<std::string_view>& lines, Layout layout, Judge isRow) {
  std::map<std::size_t, int> rowsOfLength;
  std::vector<std::string_view> cells;
  for (const std::string_view line : lines) {
    SplitCells(line, layout.separator, cells);
    if (isRow(cells, layout.decimalMark)) ++rowsOfLength[cells.size()];
  }
  Score best;
  for (const auto& [length, rows] : rowsOfLength) {
    if (rows >= best.rows) best = {rows, length};
  }
  return best;
}

template <typename Judge>
std::optional<RowShape> BestShape(const std::vector<std::string_view>& lines, Layout wanted,
                                  Judge isRow) {
  Score best;
  RowShape shape;
  for (const Layout layout : kLayouts) {
    if (wanted.separator != 0 && wanted.separator != layout.separator) continue;
    if (wanted.decimalMark != 0 && wanted.decimalMark != layout.decimalMark) continue;
    const Score score = ScoreOf(lines, layout, isRow);
    if (score.rows <= best.rows) continue;
    best = score;
    shape = {layout, score.cells};
  }
  if (best.rows < 2) return std::nullopt;
  return shape;
}

}  // namespace

void SplitCells(std::string_view line, char separator, std::vector<std::string_view>& cells) {
  cells.clear();
  if (separator == ' ') line = TrimWhite(line);
  while (!line.empty()) {
    cells.push_back(TakeCell(line, separator));
    if (line.empty()) break;
    line.remove_prefix(1);
  }
  while (!cells.empty() && cells.back().empty()) cells.pop_back();
}

std::string_view WithoutComment(std::string_view line) {
  return line.substr(0, line.find_first_of("!#%"));
}

bool IsRowOfNumbers(const std::vector<std::string_view>& cells, char decimalMark) {
  if (cells.size() < 2) return false;
  int numbers = 0;
  for (const std::string_view cell : cells) {
    if (cell.empty()) continue;
    if (std::isnan(CellNumber(cell, decimalMark))) return false;
    ++numbers;
  }
  return numbers >= 2;
}

bool HasNumbers(const std::vector<std::string_view>& cells, char decimalMark) {
  return 2 <= std::count_if(cells.begin(), cells.end(), [&](std::string_view cell) {
           return !std::isnan(CellNumber(cell, decimalMark));
         });
}

std::optional<RowShape> FindShape(const std::vector<std::string_view>& lines, Layout wanted) {
  const std::vector<std::string_view> sample = SampleOf(lines);
  if (const auto shape = BestShape(sample, wanted, IsRowOfNumbers)) return shape;
  auto shape = BestShape(sample, wanted, HasNumbers);
  if (shape) shape->hasWords = true;
  return shape;
}

}  // namespace polefit

#include "form/table_edits.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "base/text.h"
#include "grids/grid_routines.h"
#include "solver/problem/answers.h"

namespace polefit {

namespace {

/// Calls `use` with the rows of a table and its count of points.
template <typename Cells, typename Use>
decltype(auto) With(Cells& cells, Table table, Use use) {
  if (table == Table::passband) return use(cells.typed.passband, cells.typed.nFreqPoints);
  return use(cells.typed.delay, cells.typed.nDelayPoints);
}

/// The typed rows, without the spare one.
template <std::size_t Columns>
int RowCount(const PointLists<Columns>& points) {
  return points.RowsOf(1) - 1;
}

template <std::size_t Columns>
bool IsEmptyRow(const PointLists<Columns>& points, int row) {
  for (int column = 1; column <= points.kColumns; ++column) {
    if (!points.At(row, column).empty()) return false;
  }
  return true;
}

/// No longer than down to the last cell that is not empty.
template <std::size_t Columns>
void DropEmptyEnd(PointLists<Columns>& points) {
  int rows = RowCount(points);
  while (rows > 0 && IsEmptyRow(points, rows)) --rows;
  if (rows < RowCount(points)) points.KeepRows(rows + 1);
}

/// The table with its rows in another order: row i of the result is row `sources[i]`, an empty one
/// for 0.
template <std::size_t Columns>
PointLists<Columns> Reordered(const PointLists<Columns>& points, const std::vector<int>& sources) {
  PointLists<Columns> result;
  result.Resize(static_cast<int>(sources.size()) + 1);
  for (int row = 1; const int source : sources) {
    for (int column = 1; source > 0 && column <= points.kColumns; ++column) {
      result.At(row, column) = points.At(source, column);
    }
    ++row;
  }
  return result;
}

std::vector<int> Numbers(int first, int last) {
  std::vector<int> numbers(static_cast<std::size_t>(std::max(0, last - first + 1)));
  std::iota(numbers.begin(), numbers.end(), first);
  return numbers;
}

std::int16_t Count(int points) {
  return static_cast<std::int16_t>(std::clamp(points, 0, kMostPoints));
}

bool HasWeights(const FormCells& cells) {
  return IsYes(cells.typed.Slot(slot::kUseWeights));
}

/// The column with the first empty cell of a row, or 0. Blanks alone are empty, as a save has it.
template <std::size_t Columns>
int EmptyColumn(const PointLists<Columns>& points, int row, bool isWeightGiven) {
  for (int column = 1; column <= points.kColumns; ++column) {
    if (column == kWeightColumn && isWeightGiven) continue;
    if (TrimBlanks(points.At(row, column)).empty()) return column;
  }
  return 0;
}

template <std::size_t Columns>
int FullRowsOf(const PointLists<Columns>& points, bool isWeightGiven) {
  int row = 1;
  while (row <= RowCount(points) && EmptyColumn(points, row, isWeightGiven) == 0) ++row;
  return row - 1;
}

std::vector<std::string_view> Split(std::string_view text, std::string_view separators) {
  std::vector<std::string_view> parts;
  while (true) {
    const std::size_t end = text.find_first_of(separators);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    const bool isCrLf = text.substr(end, 2) == "\r\n";
    text.remove_prefix(end + (isCrLf ? 2 : 1));
  }
}

using PastedRows = std::vector<std::vector<std::string_view>>;

PastedRows PastedRowsOf(std::string_view text) {
  while (text.ends_with('\n') || text.ends_with('\r')) text.remove_suffix(1);
  PastedRows rows;
  for (const std::string_view line : Split(text, "\r\n")) rows.push_back(Split(line, "\t"));
  return rows;
}

/// Why a block cannot be taken, or "".
std::string Refusal(const PastedRows& rows, int row, int column, int columns) {
  const std::size_t width = rows.front().size();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::string where =
        "Nothing was pasted: row " + std::to_string(i + 1) + " of the clipboard ";
    if (rows[i].size() != width) return where + "has another number of cells than the first.";
    for (const std::string_view cell : rows[i]) {
      if (TrimBlanks(cell).empty() || ParseNumber(cell)) continue;
      const bool hasComma = cell.find(',') != std::string_view::npos;
      return where + "holds '" + std::string(FirstCharacters(cell, 20)) + "', which is no number" +
             (hasComma ? "; numbers have a decimal point here." : ".");
    }
  }
  const int free = columns - column + 1;
  if (static_cast<int>(width) > free) {
    return "Nothing was pasted: the clipboard has " + std::to_string(width) +
           " columns, and from here there are " + std::to_string(free) + ".";
  }
  if (row - 1 + static_cast<int>(rows.size()) > kMostPoints) {
    return "Nothing was pasted: the table would have more than " + std::to_string(kMostPoints) +
           " rows.";
  }
  return {};
}

template <std::size_t Columns>
void PutBlock(PointLists<Columns>& points, const PastedRows& rows, int row, int column,
              bool isWeightHidden) {
  const int before = RowCount(points);
  const int last = row - 1 + static_cast<int>(rows.size());
  if (last > before) points.KeepRows(last + 1);
  for (const std::vector<std::string_view>& cells : rows) {
    for (int at = column; const std::string_view cell : cells) points.At(row, at++) = cell;
    if constexpr (static_cast<int>(Columns) >= kWeightColumn) {
      const bool needsWeight =
          isWeightHidden && row > before && points.At(row, kWeightColumn).empty();
      if (needsWeight) points.At(row, kWeightColumn) = "1";
    }
    ++row;
  }
  DropEmptyEnd(points);
}

const char* ColumnName(Table table, int column) {
  static constexpr const char* kPassband[] = {"Frequency", "Yin", "Yout", "Weight"};
  static constexpr const char* kDelay[] = {"Frequency", "Delay"};
  return table == Table::passband ? kPassband[column - 1] : kDelay[column - 1];
}

std::string RowsText(int first, int last) {
  if (first == last) return "Row " + std::to_string(first) + " is";
  return "Rows " + std::to_string(first) + " to " + std::to_string(last) + " are";
}

/// The columns of a table that show.
int ShownColumns(const FormCells& cells, Table table) {
  if (table == Table::delay) return DelayLists::kColumns;
  return HasWeights(cells) ? PassbandLists::kColumns : PassbandLists::kColumns - 1;
}

/// How many rows from the top have no empty cell. With `isWeightGiven` a hidden empty weight does
/// not count.
int FullRows(const FormCells& cells, Table table, bool isWeightGiven = false) {
  const bool skipsWeight = isWeightGiven && !HasWeights(cells);
  return With(cells, table,
              [&](const auto& points, auto) { return FullRowsOf(points, skipsWeight); });
}

}  // namespace

std::string CopyBlock(const FormCells& cells, Table table, const CellBlock& block) {
  const int lastColumn = std::min(block.lastColumn, ShownColumns(cells, table));
  return With(cells, table, [&](const auto& points, auto) {
    std::string text;
    for (int row = block.firstRow; row <= std::min(block.lastRow, RowCount(points)); ++row) {
      for (int column = block.firstColumn; column <= lastColumn; ++column) {
        if (column > block.firstColumn) text += '\t';
        text += points.At(row, column);
      }
      text += "\r\n";
    }
    return text;
  });
}

void ClearBlock(FormCells& cells, Table table, const CellBlock& block) {
  const int lastColumn = std::min(block.lastColumn, ShownColumns(cells, table));
  With(cells, table, [&](auto& points, auto&) {
    for (int row = block.firstRow; row <= std::min(block.lastRow, RowCount(points)); ++row) {
      for (int column = block.firstColumn; column <= lastColumn; ++column) {
        points.At(row, column).clear();
      }
    }
    DropEmptyEnd(points);
  });
}

void DeleteRows(FormCells& cells, Table table, int firstRow, int lastRow) {
  With(cells, table, [&](auto& points, std::int16_t& count) {
    std::vector<int> kept = Numbers(1, std::min(firstRow - 1, RowCount(points)));
    const std::vector<int> below = Numbers(lastRow + 1, RowCount(points));
    kept.insert(kept.end(), below.begin(), below.end());
    points = Reordered(points, kept);
    DropEmptyEnd(points);
    const int pointsGone = std::min<int>(lastRow, count) - firstRow + 1;
    count = Count(count - std::max(0, pointsGone));
  });
}

bool InsertRows(FormCells& cells, Table table, const CellBlock& block) {
  return With(cells, table, [&](auto& points, std::int16_t& count) {
    const int rows = block.lastRow - block.firstRow + 1;
    if (RowCount(points) + rows > kMostPoints) return false;
    if (block.firstRow > RowCount(points)) return true;
    std::vector<int> sources = Numbers(1, RowCount(points));
    sources.insert(sources.begin() + block.firstRow - 1, static_cast<std::size_t>(rows), 0);
    points = Reordered(points, sources);
    if (block.firstRow <= count) count = Count(count + rows);
    return true;
  });
}

void FillDown(FormCells& cells, Table table, const CellBlock& block) {
  const int lastColumn = std::min(block.lastColumn, ShownColumns(cells, table));
  With(cells, table, [&](auto& points, auto&) {
    if (block.firstRow > RowCount(points)) return;
    if (block.lastRow > RowCount(points)) points.KeepRows(block.lastRow + 1);
    for (int row = block.firstRow + 1; row <= block.lastRow; ++row) {
      for (int column = block.firstColumn; column <= lastColumn; ++column) {
        points.At(row, column) = points.At(block.firstRow, column);
      }
    }
    DropEmptyEnd(points);
  });
}

void SortByFrequency(FormCells& cells, Table table) {
  With(cells, table, [&](auto& points, auto&) {
    std::vector<std::pair<double, int>> order;
    for (const int row : Numbers(1, RowCount(points))) {
      const double last = std::numeric_limits<double>::infinity();
      order.emplace_back(ParseNumber(points.At(row, kFrequencyColumn)).value_or(last), row);
    }
    std::stable_sort(order.begin(), order.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<int> sources;
    sources.reserve(order.size());
    for (const auto& [frequency, row] : order) sources.push_back(row);
    points = Reordered(points, sources);
    DropEmptyEnd(points);
  });
}

void DropRepeatedRows(FormCells& cells, Table table) {
  With(cells, table, [&](auto& points, std::int16_t& count) {
    std::set<double> seen;
    std::vector<int> kept;
    int pointsLeft = 0;
    for (const int row : Numbers(1, RowCount(points))) {
      const auto frequency = ParseNumber(points.At(row, kFrequencyColumn));
      if (frequency && !seen.insert(*frequency).second) continue;
      kept.push_back(row);
      if (row <= count) ++pointsLeft;
    }
    points = Reordered(points, kept);
    count = Count(pointsLeft);
  });
}

std::string Paste(FormCells& cells, Table table, int row, int column, std::string_view text) {
  const PastedRows rows = PastedRowsOf(text);
  const bool isOneCell = rows.size() == 1 && rows.front().size() == 1;
  if (isOneCell && text.empty()) return "There is no text on the clipboard.";
  std::string refusal = Refusal(rows, row, column, ShownColumns(cells, table));
  if (!isOneCell && !refusal.empty()) return refusal;
  const bool isWeightHidden = !HasWeights(cells);
  With(cells, table, [&](auto& points, std::int16_t& count) {
    PutBlock(points, rows, row, column, isWeightHidden && !isOneCell);
    if (!isOneCell) count = Count(std::max<int>(count, FullRowsOf(points, false)));
  });
  return {};
}

void KeepTypedRows(FormCells& cells, Table table) {
  const int rows = FullRows(cells, table, true);
  if (table == Table::passband && !HasWeights(cells)) {
    for (int row = 1; row <= rows; ++row) {
      std::string& weight = cells.typed.passband.At(row, kWeightColumn);
      if (TrimBlanks(weight).empty()) weight = "1";
    }
  }
  With(cells, table,
       [&](auto&, std::int16_t& count) { count = Count(std::max<int>(count, rows)); });
}

void GiveWeights(FormCells& cells) {
  PassbandLists& points = cells.typed.passband;
  for (int row = 1; row <= RowCount(points); ++row) {
    if (EmptyColumn(points, row, false) == kWeightColumn) points.At(row, kWeightColumn) = "1";
  }
  KeepTypedRows(cells, Table::passband);
}

bool CanKeepRows(const FormCells& cells, Table table) {
  const int count = With(cells, table, [](const auto&, int points) { return points; });
  const int saved = count < 1 ? 0 : FullRows(cells, table);
  return FullRows(cells, table, true) > saved;
}

std::optional<CellPlace> FirstUnsaved(const FormCells& cells, Table table) {
  return With(cells, table, [&](const auto& points, int count) -> std::optional<CellPlace> {
    const int saved = count < 1 ? 0 : FullRowsOf(points, false);
    if (saved >= RowCount(points)) return std::nullopt;
    if (count < 1) return CellPlace{};
    return CellPlace{saved + 1, EmptyColumn(points, saved + 1, false)};
  });
}

std::string UnsavedRows(const FormCells& cells, Table table) {
  const std::optional<CellPlace> place = FirstUnsaved(cells, table);
  if (!place) return {};
  return With(cells, table, [&](const auto& points, int count) -> std::string {
    const int typed = RowCount(points);
    if (count < 1) {
      return std::to_string(typed) + (typed == 1 ? " row" : " rows") + " typed, no points yet.";
    }
    const bool isHidden = place->column == kWeightColumn && !HasWeights(cells);
    return RowsText(place->row, typed) + " not saved: row " + std::to_string(place->row) +
           " has no " + ColumnName(table, place->column) + (isHidden ? " (column hidden)." : ".");
  });
}

}  // namespace polefit

#include "grids/grid_routines.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "base/number.h"
#include "base/text.h"
#include "grids/cell_editor.h"

namespace polefit {

namespace {

constexpr std::string_view kPassDataFormat = "#|^Frequency|^Yin|^Yout|^Weight;#";
constexpr std::string_view kDelayDataFormat = "#|^Frequency|^Delay (tx);#";
constexpr int kClearedRowCount = 3;

bool PassDataIsCurrent(GridState& state) {
  return state.CurrentGrid == &state.PassData;
}

int DataColumnCount(GridState& state) {
  return PassDataIsCurrent(state) ? PassbandLists::kColumns : DelayLists::kColumns;
}

std::vector<int> DataColumnWidths(GridState& state) {
  std::vector<int> widths;
  for (int column = 1; column <= DataColumnCount(state); ++column) {
    widths.push_back(state.CurrentGrid->ColumnWidth(column));
  }
  return widths;
}

void RestoreWidths(GridState& state, const std::vector<int>& widths) {
  int column = 0;
  for (const int width : widths) state.CurrentGrid->SetColumnWidth(++column, width);
}

template <std::size_t Columns>
void FillGrid(GridState& state, GridView& grid, const PointLists<Columns>& points, int count) {
  if (count < 1) return;
  state.CurrentGrid = &grid;
  for (int row = 1; row <= count; ++row) {
    AddGridRow(state, false);
    for (int column = 1; column <= points.kColumns; ++column) {
      grid.SetText(row, column, points.At(row, column));
    }
  }
  AddGridRow(state, true);
}

/// The cells of a grid as they would be once the open editor is closed.
class TypedCells {
 public:
  TypedCells(const GridState& state, const GridView& grid)
      : grid_(grid),
        editor_(state.txtCellEditor),
        isEdited_(state.CurrentGrid == &grid && state.txtCellEditor.IsVisible()),
        row_(state.editedRow),
        column_(state.editedColumn) {}

  int RowCount() const { return grid_.RowCount(); }
  std::string Text(int row, int column) const {
    const bool isEdited = isEdited_ && row == row_ && column == column_;
    return isEdited ? editor_.Text() : grid_.Text(row, column);
  }

 private:
  const GridView& grid_;
  const CellEditorView& editor_;
  bool isEdited_;
  int row_;
  int column_;
};

/// Stores one grid row; false when one of its cells is empty. A row beyond the last is empty.
/// Kept: the Weight cell counts while its column is hidden, so a row without a weight ends the
/// list.
template <std::size_t Columns>
bool ReadRow(const TypedCells& grid, int row, PointLists<Columns>& points) {
  if (row >= grid.RowCount()) return false;
  bool full = true;
  for (int column = 1; column <= points.kColumns; ++column) {
    std::string& cell = points.At(row, column);
    cell = TrimBlanks(grid.Text(row, column));
    full = full && !cell.empty();
  }
  return full;
}

template <std::size_t Columns>
void ReadGrid(const TypedCells& grid, PointLists<Columns>& points, std::int16_t& count) {
  if (count < 1) {
    // Kept: a grid without points is not read, whatever was typed into it. Its count opens again
    // only when a file with points is shown.
    points.Resize(1);
    return;
  }
  points.Resize(grid.RowCount() + 1);
  int row = 1;
  while (ReadRow(grid, row, points)) ++row;
  // The row that ends the list is counted in 16 bits too, as the reader counts its spare row.
  count = static_cast<std::int16_t>(ToInteger16(row) - 1);
}

bool IsEmptyRow(const GridView& grid, int row, int columns) {
  for (int column = 1; column <= columns; ++column) {
    if (!grid.Text(row, column).empty()) return false;
  }
  return true;
}

template <std::size_t Columns>
void ReadRows(const GridView& grid, PointLists<Columns>& points) {
  int rows = grid.RowCount() - 1;
  while (rows > 0 && IsEmptyRow(grid, rows, points.kColumns)) --rows;
  points.Resize(rows + 1);
  for (int row = 1; row <= rows; ++row) {
    for (int column = 1; column <= points.kColumns; ++column) {
      points.At(row, column) = grid.Text(row, column);
    }
  }
}

/// Titles, alignment and row numbers of the current grid; the row count stays. Column widths
/// become the titles' own.
void FormatGrid(GridState& state) {
  GridView& grid = *state.CurrentGrid;
  std::string format(PassDataIsCurrent(state) ? kPassDataFormat : kDelayDataFormat);
  const int rows = grid.RowCount();
  for (int row = 1; row <= rows; ++row) {
    format += '|';
    format += std::to_string(row);
  }
  grid.SetFormatString(format);
  // The header row has no number, so the numbers made one row too many.
  grid.SetRowCount(grid.RowCount() - 1);
}

/// Makes `grid` the current one, with room for `rows` data rows and the spare ones below them.
void MakeRoom(GridState& state, GridView& grid, int rows) {
  constexpr int kHeaderAndSpareRows = 4;
  state.CurrentGrid = &grid;
  if (grid.RowCount() >= rows + kHeaderAndSpareRows) return;
  const std::vector<int> widths = DataColumnWidths(state);
  grid.SetRowCount(rows + kHeaderAndSpareRows);
  FormatGrid(state);
  RestoreWidths(state, widths);
}

template <std::size_t Columns>
void FillRowsBehind(GridState& state, GridView& grid, const PointLists<Columns>& points,
                    int count) {
  const int rows = points.RowsOf(1) - 1;
  const int first = std::max(count, 0) + 1;
  if (rows < first) return;
  MakeRoom(state, grid, rows);
  for (int row = first; row <= rows; ++row) {
    for (int column = 1; column <= points.kColumns; ++column) {
      grid.SetText(row, column, points.At(row, column));
    }
  }
}

}  // namespace

void ClearGrid(GridState& state) {
  state.document.DataChanged = 1;
  (PassDataIsCurrent(state) ? state.document.record.nFreqPoints
                            : state.document.record.nDelayPoints) = 0;
  const std::vector<int> widths = DataColumnWidths(state);
  HideCellEditor(state, true);
  state.CurrentGrid->Clear();
  state.CurrentGrid->SetRowCount(kClearedRowCount);
  FormatGrid(state);
  RestoreWidths(state, widths);
}

void ClearGrid(GridState& state, GridView& grid) {
  state.CurrentGrid = &grid;
  ClearGrid(state);
}

void ClearBoth(GridState& state) {
  ClearGrid(state, state.PassData);
  ClearGrid(state, state.DelayData);
}

void AddGridRow(GridState& state, bool renumber) {
  const std::vector<int> widths = DataColumnWidths(state);
  state.CurrentGrid->SetRowCount(state.CurrentGrid->RowCount() + 1);
  state.document.DataChanged = 1;
  if (renumber) FormatGrid(state);
  RestoreWidths(state, widths);
}

void SizeGridColumns(GridState& state) {
  constexpr int kPassDataWidth = 6910;
  constexpr int kDelayDataWidth = 5315;
  constexpr int kBorder = 20;
  GridView& pass = state.PassData;
  const int passWidth = pass.Width() - pass.ColumnWidth(0) - kBorder;
  const int quarter = ToInteger16(passWidth / 4.0);
  for (const int column : {1, 2, kWeightColumn}) pass.SetColumnWidth(column, quarter);
  pass.SetColumnWidth(3, passWidth - 3 * quarter);
  pass.SetWidth(kPassDataWidth);

  GridView& delay = state.DelayData;
  const int delayWidth = delay.Width() - delay.ColumnWidth(0) - kBorder;
  const int half = ToInteger16(delayWidth / 2.0);
  delay.SetColumnWidth(1, half);
  delay.SetColumnWidth(2, delayWidth - half - 30);
  delay.SetWidth(kDelayDataWidth);
}

void ShowWeightColumn(GridState& state, bool useWeights) {
  state.PassData.SetColumnWidth(kWeightColumn, useWeights ? state.PassData.ColumnWidth(1) : 0);
}

void FillGrids(GridState& state, const PassbandLists& passband, const DelayLists& delay) {
  FillGrid(state, state.PassData, passband, state.document.record.nFreqPoints);
  FillGrid(state, state.DelayData, delay, state.document.record.nDelayPoints);
}

void ReadGrids(const GridState& state, ResponseRecord& record) {
  ReadGrid(TypedCells(state, state.PassData), record.passband, record.nFreqPoints);
  ReadGrid(TypedCells(state, state.DelayData), record.delay, record.nDelayPoints);
}

void ReadAllRows(const GridState& state, PassbandLists& passband, DelayLists& delay) {
  ReadRows(state.PassData, passband);
  ReadRows(state.DelayData, delay);
}

void FillRowsBehindPoints(GridState& state, const PassbandLists& passband,
                          const DelayLists& delay) {
  FillRowsBehind(state, state.PassData, passband, state.document.record.nFreqPoints);
  FillRowsBehind(state, state.DelayData, delay, state.document.record.nDelayPoints);
}

}  // namespace polefit

#pragma once

#include <string>
#include <string_view>

namespace polefit {

/// Cells of a grid, rows and columns counting from 1, the last ones included.
struct CellBlock {
  int firstRow = 1;
  int lastRow = 1;
  int firstColumn = 1;
  int lastColumn = 1;
};

/// One spreadsheet-like grid as the grid routines see it. Row 0 is the header row and column 0 the
/// row-number column; both count in the row count and take part in the numbering. Widths are twips.
class GridView {
 public:
  virtual ~GridView() = default;

  virtual int RowCount() const = 0;
  /// Rows that come in are empty.
  virtual void SetRowCount(int rows) = 0;
  virtual std::string Text(int row, int column) const = 0;
  virtual void SetText(int row, int column, const std::string& text) = 0;
  /// Empties every cell, the fixed ones too. Row count and widths stay.
  virtual void Clear() = 0;
  /// Sets titles, alignment and row numbers: the columns before ";", the row headers after it, "|"
  /// between cells, "^" for centred. It resets the column widths to the titles' own, and the row
  /// count follows the row headers when they are more.
  virtual void SetFormatString(const std::string& format) = 0;

  virtual int ColumnWidth(int column) const = 0;
  /// A width of 0 hides the column.
  virtual void SetColumnWidth(int column, int twips) = 0;
  virtual int Width() const = 0;
  virtual void SetWidth(int twips) = 0;

  virtual int CurrentRow() const = 0;
  virtual int CurrentColumn() const = 0;
  virtual void SetCurrentRow(int row) = 0;
  /// Shrinks the selection to the current cell.
  virtual void CollapseSelection() = 0;
};

/// The one floating text box in which cells of both grids are edited.
class CellEditorView {
 public:
  virtual ~CellEditorView() = default;

  virtual bool IsVisible() const = 0;
  virtual std::string Text() const = 0;
  virtual void SetText(const std::string& text) = 0;
  /// Counts characters; a length beyond the end means up to the end.
  virtual void SetSelection(int start, int length) = 0;
  /// Covers the current cell of `grid`, comes to the front and takes the focus.
  virtual void ShowOver(GridView& grid) = 0;
  virtual void Hide() = 0;
};

}  // namespace polefit

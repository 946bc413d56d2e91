#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "grids/format_string.h"
#include "grids/grid_view.h"
#include "record/point_lists.h"

namespace polefit::testing {

using Cells = std::vector<std::string>;

/// A grid in memory that keeps the contract of GridView to the cell.
class FakeGrid final : public GridView {
 public:
  static constexpr int kTitleWidth = 960;

  FakeGrid(std::size_t columns, int width)
      : rows_(4, Cells(columns)), widths_(columns, kTitleWidth), width_(width) {}

  int RowCount() const override { return static_cast<int>(rows_.size()); }
  void SetRowCount(int rows) override {
    rows_.resize(Index(rows), Cells(widths_.size()));
    row_ = std::min(row_, rows - 1);
  }
  std::string Text(int row, int column) const override {
    return rows_.at(Index(row)).at(Index(column));
  }
  void SetText(int row, int column, const std::string& text) override {
    Row(row).at(Index(column)) = text;
  }
  void Clear() override { rows_.assign(rows_.size(), Cells(widths_.size())); }
  void SetFormatString(const std::string& format) override {
    const GridFormat parsed = ParseFormatString(format);
    SetRowCount(std::max(RowCount(), static_cast<int>(parsed.rowHeaders.size())));
    for (std::size_t i = 0; i < widths_.size(); ++i) rows_[0][i] = parsed.columns.at(i).text;
    for (std::size_t i = 0; i < parsed.rowHeaders.size(); ++i) rows_[i][0] = parsed.rowHeaders[i];
    widths_.assign(widths_.size(), kTitleWidth);
  }

  int ColumnWidth(int column) const override { return widths_.at(Index(column)); }
  void SetColumnWidth(int column, int twips) override { widths_.at(Index(column)) = twips; }
  int Width() const override { return width_; }
  void SetWidth(int twips) override { width_ = twips; }

  int CurrentRow() const override { return row_; }
  int CurrentColumn() const override { return 1; }
  void SetCurrentRow(int row) override { row_ = row; }
  void CollapseSelection() override {}

  /// The cells of one row, column 0 included.
  Cells& Row(int row) { return rows_.at(Index(row)); }
  const std::vector<Cells>& Rows() const { return rows_; }
  const std::vector<int>& ColumnWidths() const { return widths_; }

 private:
  static std::size_t Index(int number) { return static_cast<std::size_t>(number); }

  std::vector<Cells> rows_;
  std::vector<int> widths_;
  int width_;
  int row_ = 1;
};

class FakeCellEditor final : public CellEditorView {
 public:
  bool IsVisible() const override { return visible; }
  std::string Text() const override { return text; }
  void SetText(const std::string& newText) override { text = newText; }
  void SetSelection(int /*start*/, int /*length*/) override {}
  void ShowOver(GridView& /*grid*/) override { visible = true; }
  void Hide() override { visible = false; }

  bool visible = false;
  std::string text;
};

/// Makes `points` `count` points long, with the spare row; each cell names its row and column.
template <std::size_t Columns>
void FillPoints(PointLists<Columns>& points, int count) {
  points.Resize(count + 1);
  for (int row = 1; row <= count; ++row) {
    for (int column = 1; column <= points.kColumns; ++column) {
      points.At(row, column) = std::to_string(row) + "." + std::to_string(column);
    }
  }
}

}  // namespace polefit::testing

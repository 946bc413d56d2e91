#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "grids/format_string.h"
#include "grids/grid_view.h"

namespace polefit::testing {

/// A grid in memory that keeps the contract of GridView to the cell.
class FakeGrid final : public GridView {
 public:
  static constexpr int kTitleWidth = 960;

  FakeGrid(int columns, int width)
      : cells_(4, std::vector<std::string>(static_cast<std::size_t>(columns))),
        widths_(static_cast<std::size_t>(columns), kTitleWidth),
        width_(width) {}

  int RowCount() const override { return static_cast<int>(cells_.size()); }
  void SetRowCount(int rows) override {
    cells_.resize(static_cast<std::size_t>(rows), std::vector<std::string>(widths_.size()));
    row_ = std::min(row_, rows - 1);
  }
  std::string Text(int row, int column) const override {
    return cells_.at(Index(row)).at(Index(column));
  }
  void SetText(int row, int column, const std::string& text) override {
    cells_.at(Index(row)).at(Index(column)) = text;
  }
  void Clear() override {
    for (auto& row : cells_) std::fill(row.begin(), row.end(), "");
  }
  void SetFormatString(const std::string& format) override {
    const GridFormat parsed = ParseFormatString(format);
    for (std::size_t i = 0; i < parsed.columns.size(); ++i) {
      cells_[0].at(i) = parsed.columns[i].text;
      widths_.at(i) = kTitleWidth;
    }
    SetRowCount(std::max(RowCount(), static_cast<int>(parsed.rowHeaders.size())));
    for (std::size_t i = 0; i < parsed.rowHeaders.size(); ++i) cells_[i][0] = parsed.rowHeaders[i];
  }

  int ColumnWidth(int column) const override { return widths_.at(Index(column)); }
  void SetColumnWidth(int column, int twips) override { widths_.at(Index(column)) = twips; }
  int Width() const override { return width_; }
  void SetWidth(int twips) override { width_ = twips; }

  int CurrentRow() const override { return row_; }
  int CurrentColumn() const override { return column_; }
  void SetCurrentRow(int row) override { row_ = row; }
  void CollapseSelection() override {}

  void MoveTo(int row, int column) {
    row_ = row;
    column_ = column;
  }
  /// The cells of one row, column 0 included.
  const std::vector<std::string>& Row(int row) const { return cells_.at(Index(row)); }

 private:
  static std::size_t Index(int number) { return static_cast<std::size_t>(number); }

  std::vector<std::vector<std::string>> cells_;
  std::vector<int> widths_;
  int width_;
  int row_ = 1;
  int column_ = 1;
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

}  // namespace polefit::testing

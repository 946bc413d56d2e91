#pragma once

#include <QTableView>
#include <string>
#include <vector>

#include "grids/grid_view.h"

namespace polefit {

class GridCorner;
class GridModel;

/// A data grid on the screen. Its cells are never edited in place; it tells what the user does to
/// it and shows what the grid routines put in.
class GridWidget final : public QTableView, public GridView {
  Q_OBJECT

 public:
  /// A grid of `columns` columns and `width` twips, the fixed column included, with four rows.
  GridWidget(const char* name, int columns, int width);

  int RowCount() const override;
  void SetRowCount(int rows) override;
  std::string Text(int row, int column) const override;
  void SetText(int row, int column, const std::string& text) override;
  void Clear() override;
  void SetFormatString(const std::string& format) override;
  int ColumnWidth(int column) const override;
  void SetColumnWidth(int column, int twips) override;
  int Width() const override { return width_; }
  void SetWidth(int twips) override;
  int CurrentRow() const override;
  int CurrentColumn() const override;
  void SetCurrentRow(int row) override;
  void CollapseSelection() override;

  /// The current cell in the viewport, without its grid lines, scrolled into view.
  QRect CurrentCellRect();
  Qt::Alignment CurrentCellAlignment() const;
  /// What a screen reader calls the current cell: "Frequency 3".
  QString CurrentCellName() const;

  /// What the user has selected, at least the current cell, as far as it shows.
  CellBlock SelectedBlock() const;
  /// Whether it was selected by the row numbers.
  bool AreWholeRows() const { return areWholeRows_; }
  void SelectBlock(const CellBlock& block);
  void SetCurrentCell(int row, int column);
  /// A cell with a finding. Its text comes up when the mouse rests on the cell.
  struct CellMark {
    int row = 1;
    int column = 1;
    bool isFault = false;
    QString text;
  };
  void SetMarks(const std::vector<CellMark>& marks);

  /// A grey text that shows while no cell holds anything.
  void SetEmptyText(const QString& text);
  /// What the header cells and the cells of a column tell when the mouse rests on them.
  void SetColumnTip(int column, const QString& tip);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void mousePressed();
  void cellDoubleClicked();
  /// One character, control characters included.
  void characterTyped(const QString& character);
  /// The cells stand elsewhere in the viewport than before.
  void cellsMoved();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void updateGeometries() override;
  void scrollContentsBy(int dx, int dy) override;

 private:
  void TakeDraggedWidth(int section, int pixels);
  void ApplyColumnWidth(int column);
  void ApplyMetrics();
  void ApplyGridColor();
  int TitleWidth(int column) const;
  /// Brings the view up to the model, at once or when the running event is done.
  void ShowChanges();
  void ShowChangesLater();

  GridModel* model_;
  GridCorner* corner_;
  /// In twips, column 0 first.
  std::vector<int> columnWidths_;
  int width_;
  bool changesPosted_ = false;
  bool areWholeRows_ = false;
  QString emptyText_;
};

}  // namespace polefit

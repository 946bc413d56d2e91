#pragma once

#include <QAbstractTableModel>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "grids/format_string.h"

namespace polefit {

/// The cells of one grid, fixed row and column included, as UTF-8. The view sees the data cells as
/// its table, row 0 and column 0 as its headers.
///
/// Rows come and go by the ten thousand while a record is shown, so the view learns of them
/// through Announce, not row by row.
class GridModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  GridModel(int columns, QObject* parent);

  int GridRowCount() const { return static_cast<int>(cells_.size()) / columns_; }
  void SetGridRowCount(int rows);
  int GridColumnCount() const { return columns_; }
  const std::string& Cell(int row, int column) const { return cells_[Index(row, column)]; }
  void SetCell(int row, int column, const std::string& text);
  void Clear();
  /// Titles and row headers; rows are added when the row headers are more.
  void Apply(const GridFormat& format);

  /// Whether every data cell is empty.
  bool IsEmpty() const;
  void SetColumnTip(int column, const QString& tip);

  struct Mark {
    bool isFault = false;
    QString text;
  };
  /// By row and column. `data` gives whether it is a fault for Qt::UserRole, and its text as tip.
  void SetMarks(std::map<std::pair<int, int>, Mark> marks) { marks_ = std::move(marks); }
  /// Tells the view what has changed since the last time.
  void Announce();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  std::size_t Index(int row, int column) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
           static_cast<std::size_t>(column);
  }
  Qt::Alignment ColumnAlignment(int column) const;

  int columns_;
  std::vector<std::string> cells_;
  std::vector<bool> centred_;
  std::vector<QString> tips_;
  std::map<std::pair<int, int>, Mark> marks_;
  int announcedRows_ = 1;
  bool changed_ = false;
};

}  // namespace polefit

#include "grids/ui/grid_model.h"

#include <algorithm>

namespace polefit {

GridModel::GridModel(int columns, QObject* parent)
    : QAbstractTableModel(parent),
      columns_(columns),
      cells_(static_cast<std::size_t>(columns)),
      centred_(static_cast<std::size_t>(columns)),
      tips_(static_cast<std::size_t>(columns)) {}

void GridModel::SetGridRowCount(int rows) {
  cells_.resize(Index(rows, 0));
}

void GridModel::SetCell(int row, int column, const std::string& text) {
  cells_[Index(row, column)] = text;
  changed_ = true;
}

void GridModel::Clear() {
  std::fill(cells_.begin(), cells_.end(), std::string());
  changed_ = true;
}

bool GridModel::IsEmpty() const {
  for (std::size_t i = Index(1, 0); i < cells_.size(); ++i) {
    const bool isRowNumber = i % static_cast<std::size_t>(columns_) == 0;
    if (!isRowNumber && !cells_[i].empty()) return false;
  }
  return true;
}

void GridModel::SetColumnTip(int column, const QString& tip) {
  tips_.at(static_cast<std::size_t>(column)) = tip;
}

void GridModel::Apply(const GridFormat& format) {
  for (std::size_t column = 0; column < format.columns.size(); ++column) {
    cells_[column] = format.columns[column].text;
    centred_[column] = format.columns[column].centred;
  }
  SetGridRowCount(std::max(GridRowCount(), static_cast<int>(format.rowHeaders.size())));
  int row = 0;
  for (const std::string& header : format.rowHeaders) cells_[Index(row++, 0)] = header;
  changed_ = true;
}

void GridModel::Announce() {
  const int rows = GridRowCount();
  if (rows > announcedRows_) {
    beginInsertRows({}, announcedRows_ - 1, rows - 2);
    announcedRows_ = rows;
    endInsertRows();
  } else if (rows < announcedRows_) {
    beginRemoveRows({}, rows - 1, announcedRows_ - 2);
    announcedRows_ = rows;
    endRemoveRows();
  }
  if (!changed_) return;
  changed_ = false;
  Q_EMIT headerDataChanged(Qt::Horizontal, 0, columns_ - 2);
  if (rows < 2) return;
  Q_EMIT headerDataChanged(Qt::Vertical, 0, rows - 2);
  Q_EMIT dataChanged(index(0, 0), index(rows - 2, columns_ - 2));
}

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : announcedRows_ - 1;
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columns_ - 1;
}

Qt::Alignment GridModel::ColumnAlignment(int column) const {
  const bool centred = centred_[static_cast<std::size_t>(column)];
  return (centred ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  const int row = index.row() + 1;
  const int column = index.column() + 1;
  if (!index.isValid() || row >= GridRowCount()) return {};
  if (role == Qt::DisplayRole) return QString::fromStdString(Cell(row, column));
  if (role == Qt::TextAlignmentRole) return QVariant(ColumnAlignment(column));
  const bool isAboutMark =
      role == Qt::UserRole || role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole;
  const auto mark = isAboutMark ? marks_.find({row, column}) : marks_.end();
  if (mark != marks_.end()) {
    return role == Qt::UserRole ? QVariant(mark->second.isFault) : QVariant(mark->second.text);
  }
  if (role == Qt::ToolTipRole) return tips_[static_cast<std::size_t>(column)];
  return {};
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const bool titles = orientation == Qt::Horizontal;
  if (role == Qt::TextAlignmentRole) {
    return QVariant(titles ? ColumnAlignment(section + 1) : Qt::AlignCenter);
  }
  if (role == Qt::ToolTipRole && titles) return tips_[static_cast<std::size_t>(section) + 1];
  if (role != Qt::DisplayRole || (!titles && section + 1 >= GridRowCount())) return {};
  return QString::fromStdString(titles ? Cell(0, section + 1) : Cell(section + 1, 0));
}

}  // namespace polefit

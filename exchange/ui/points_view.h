#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "exchange/import/import_plan.h"

namespace polefit {

class PointsDiagram;

/// The rows of an import as they will stand in the passband table, with the delay beside them where
/// there is one, and between them, by its line, what was skipped of the file.
class PointsModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// Where a passband table stands.
  static constexpr int kWeightColumn = 3;

  using QAbstractTableModel::QAbstractTableModel;

  void Show(const ImportPreview& preview, const ImportPlan& plan);
  /// The rows that show a skipped line, in one text over all columns.
  std::vector<int> SkippedRows() const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  /// A row that arrives, by its index, or the text of a skipped line.
  struct Entry {
    std::size_t row = 0;
    QString skipped = {};
  };

  void Arrange(const ImportPreview& preview, const ImportPlan& plan);
  QVariant CellOf(std::size_t row, std::size_t column) const;

  bool hasPassband_ = true;
  std::vector<PassbandCells> rows_;
  std::vector<DelayCells> delays_;
  std::vector<Entry> entries_;
};

/// Draws what arrives: the values in dB, or a delay that comes alone.
void ShowPoints(const ImportPreview& preview, const ImportPlan& plan, PointsDiagram& diagram);

}  // namespace polefit

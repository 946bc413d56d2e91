#pragma once

#include <QAbstractTableModel>
#include <QWidget>
#include <vector>

#include "exchange/import/import_plan.h"

namespace polefit {

/// The rows of an import as they will stand in the passband table, with the delay beside them where
/// there is one.
class PointsModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  void Show(const ImportPreview& preview);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  std::vector<PassbandCells> rows_;
  std::vector<DelayCells> delays_;
};

/// A small diagram of what arrives: the values in dB over the frequency.
class PointsDiagram final : public QWidget {
 public:
  using QWidget::QWidget;

  void Show(const ImportPreview& preview, Role role);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void DrawCurve(QPainter& painter, const QRectF& area) const;
  void DrawLabels(QPainter& painter, const QRectF& area) const;

  /// MHz and dB.
  std::vector<QPointF> points_;
  QRectF range_;
};

}  // namespace polefit

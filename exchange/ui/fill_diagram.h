#pragma once

#include <QWidget>
#include <vector>

#include "exchange/fill_column.h"

namespace polefit {

/// A small diagram of what a formula would put into a column, over the frequency.
class FillDiagram final : public QWidget {
 public:
  FillDiagram();

  /// Nothing for a column that cannot be filled.
  void Show(const FilledColumn& filled);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QPolygonF Curve(const QRectF& area) const;

  /// MHz and the column's own unit, and where they lie.
  std::vector<QPointF> points_;
  QRectF range_;
};

}  // namespace polefit

#pragma once

#include <QString>
#include <QWidget>
#include <vector>

namespace polefit {

/// A small diagram of values over the frequency: a curve, its range above, the ends of the
/// frequencies below.
class PointsDiagram final : public QWidget {
 public:
  PointsDiagram(const char* name, const QString& accessibleName);

  /// MHz, and the values in `unit`, which may be "". The points may come in any order.
  void Show(std::vector<QPointF> points, const QString& unit);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void DrawCurve(QPainter& painter, const QRectF& area) const;
  void DrawLabels(QPainter& painter, const QRectF& area) const;

  std::vector<QPointF> points_;
  /// Where they lie.
  QRectF range_;
  QString unit_;
};

}  // namespace polefit

#include "exchange/ui/points_diagram.h"

#include <QPainter>
#include <QPolygonF>
#include <algorithm>
#include <cmath>
#include <utility>

namespace polefit {

namespace {

/// Where a value lies in a range; the middle of a range without extent.
double ShareOf(double value, double least, double extent) {
  return extent > 0 ? (value - least) / extent : .5;
}

QRectF RangeOf(const std::vector<QPointF>& points) {
  if (points.empty()) return {};
  const auto [left, right] =
      std::minmax_element(points.begin(), points.end(),
                          [](const QPointF& a, const QPointF& b) { return a.x() < b.x(); });
  const auto [low, high] =
      std::minmax_element(points.begin(), points.end(),
                          [](const QPointF& a, const QPointF& b) { return a.y() < b.y(); });
  return {left->x(), low->y(), right->x() - left->x(), high->y() - low->y()};
}

}  // namespace

PointsDiagram::PointsDiagram(const char* name, const QString& accessibleName) {
  setObjectName(name);
  setAccessibleName(accessibleName);
}

void PointsDiagram::Show(std::vector<QPointF> points, const QString& unit) {
  points_ = std::move(points);
  std::erase_if(points_, [](const QPointF& point) {
    return !std::isfinite(point.x()) || !std::isfinite(point.y());
  });
  range_ = RangeOf(points_);
  unit_ = unit;
  update();
}

QSize PointsDiagram::sizeHint() const {
  return {30 * fontMetrics().averageCharWidth(), 8 * fontMetrics().height()};
}

void PointsDiagram::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const int line = fontMetrics().height();
  const QRectF area = QRectF(rect()).adjusted(.5, line + .5, -.5, -line - .5);
  painter.fillRect(area, palette().base());
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(area);
  if (points_.empty()) return;
  DrawCurve(painter, area.adjusted(4, 4, -4, -4));
  DrawLabels(painter, area);
}

void PointsDiagram::DrawCurve(QPainter& painter, const QRectF& area) const {
  constexpr int kMostDots = 80;
  constexpr double kDot = 1.8;
  QPolygonF curve;
  for (const QPointF& point : points_) {
    const double x = ShareOf(point.x(), range_.left(), range_.width());
    const double y = ShareOf(point.y(), range_.top(), range_.height());
    curve << QPointF(area.left() + x * area.width(), area.bottom() - y * area.height());
  }
  painter.setPen(QPen(palette().color(QPalette::Highlight), 1.6));
  painter.drawPolyline(curve);
  if (curve.size() > kMostDots) return;
  painter.setBrush(palette().color(QPalette::Highlight));
  for (const QPointF& point : curve) painter.drawEllipse(point, kDot, kDot);
}

/// The values from the top down, as the curve shows them.
void PointsDiagram::DrawLabels(QPainter& painter, const QRectF& area) const {
  painter.setPen(palette().color(QPalette::WindowText));
  const int line = fontMetrics().height();
  const QRectF above(area.left(), area.top() - line, area.width(), line);
  const QRectF below(area.left(), area.bottom() + 1, area.width(), line);
  const QString highest = QString::number(range_.bottom(), 'g', 3);
  const QString lowest = QString::number(range_.top(), 'g', 3);
  const QString values = highest == lowest ? highest : tr("%1 to %2").arg(highest, lowest);
  painter.drawText(above, Qt::AlignLeft, unit_.isEmpty() ? values : values + ' ' + unit_);
  painter.drawText(below, Qt::AlignLeft, QString::number(range_.left(), 'g', 6));
  painter.drawText(below, Qt::AlignRight, tr("%1 MHz").arg(range_.right(), 0, 'g', 6));
}

}  // namespace polefit

#include "exchange/ui/fill_diagram.h"

#include <QPainter>
#include <QPolygonF>
#include <algorithm>

namespace polefit {

FillDiagram::FillDiagram() {
  setObjectName("picFill");
  setAccessibleName(tr("Diagram of the column"));
}

void FillDiagram::Show(const FilledColumn& filled) {
  points_.clear();
  range_ = {};
  for (std::size_t i = 0; filled.fault.empty() && i < filled.values.size(); ++i) {
    points_.emplace_back(filled.frequencies[i], filled.values[i]);
  }
  if (!points_.empty()) {
    const auto [left, right] =
        std::minmax_element(points_.begin(), points_.end(),
                            [](const QPointF& a, const QPointF& b) { return a.x() < b.x(); });
    const auto [low, high] =
        std::minmax_element(points_.begin(), points_.end(),
                            [](const QPointF& a, const QPointF& b) { return a.y() < b.y(); });
    range_ = QRectF(left->x(), low->y(), right->x() - left->x(), high->y() - low->y());
  }
  update();
}

QSize FillDiagram::sizeHint() const {
  return {44 * fontMetrics().averageCharWidth(), 12 * fontMetrics().height()};
}

QPolygonF FillDiagram::Curve(const QRectF& area) const {
  QPolygonF curve;
  for (const QPointF& point : points_) {
    const double x = range_.width() > 0 ? (point.x() - range_.left()) / range_.width() : .5;
    const double y = range_.height() > 0 ? (point.y() - range_.top()) / range_.height() : .5;
    curve << QPointF(area.left() + x * area.width(), area.bottom() - y * area.height());
  }
  return curve;
}

void FillDiagram::paintEvent(QPaintEvent* /*event*/) {
  constexpr int kMostDots = 80;
  constexpr double kDot = 1.8;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const int line = fontMetrics().height();
  const QRectF area = QRectF(rect()).adjusted(.5, line + .5, -.5, -line - .5);
  painter.fillRect(area, palette().base());
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(area);
  if (points_.empty()) return;
  const QPolygonF curve = Curve(area.adjusted(4, 4, -4, -4));
  painter.setPen(QPen(palette().color(QPalette::Highlight), 1.6));
  painter.drawPolyline(curve);
  painter.setBrush(palette().color(QPalette::Highlight));
  for (const QPointF& point : curve) {
    if (curve.size() <= kMostDots) painter.drawEllipse(point, kDot, kDot);
  }
  painter.setPen(palette().color(QPalette::Text));
  const QRectF above(area.left(), area.top() - line, area.width(), line);
  const QRectF below(area.left(), area.bottom() + 1, area.width(), line);
  painter.drawText(above, Qt::AlignLeft,
                   tr("%1 to %2").arg(range_.top(), 0, 'g', 4).arg(range_.bottom(), 0, 'g', 4));
  painter.drawText(below, Qt::AlignLeft, QString::number(range_.left(), 'g', 6));
  painter.drawText(below, Qt::AlignRight, tr("%1 MHz").arg(range_.right(), 0, 'g', 6));
}

}  // namespace polefit

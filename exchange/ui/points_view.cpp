#include "exchange/ui/points_view.h"

#include <QPainter>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

#include "widgets/controls.h"

namespace polefit {

namespace {

constexpr double kLowestDecibel = -120;

}  // namespace

void PointsModel::Show(const ImportPreview& preview) {
  beginResetModel();
  rows_ = preview.rows;
  delays_ = CellsOfPoints(preview.points.delays);
  endResetModel();
}

int PointsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(std::max(rows_.size(), delays_.size()));
}

int PointsModel::columnCount(const QModelIndex& parent) const {
  if (parent.isValid()) return 0;
  return delays_.empty() ? 4 : 6;
}

QVariant PointsModel::data(const QModelIndex& index, int role) const {
  if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
  if (role != Qt::DisplayRole) return {};
  const auto row = static_cast<std::size_t>(index.row());
  const auto column = static_cast<std::size_t>(index.column());
  if (column < 4) return row < rows_.size() ? ToQString(rows_[row].at(column)) : QVariant();
  return row < delays_.size() ? ToQString(delays_[row].at(column - 4)) : QVariant();
}

QVariant PointsModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return section + 1;
  const QString titles[] = {tr("MHz"),    tr("Yin"),        tr("Yout"),
                            tr("Weight"), tr("Delay: MHz"), tr("TX, ns")};
  return titles[section];
}

void PointsDiagram::Show(const ImportPreview& preview, Role role) {
  points_.clear();
  double lowest = HUGE_VAL;
  double highest = -HUGE_VAL;
  for (const PassbandRow& row : preview.points.passband) {
    const double value = role == Role::equalise ? row.yin.value : row.yout.value;
    const double decibel = std::max(kLowestDecibel, Decibel(std::abs(value)));
    points_.emplace_back(row.frequency.value, decibel);
    lowest = std::min(lowest, decibel);
    highest = std::max(highest, decibel);
  }
  if (!points_.empty()) {
    if (highest - lowest < 1) highest = lowest + 1;
    range_ = QRectF(points_.front().x(), lowest, points_.back().x() - points_.front().x(),
                    highest - lowest);
  }
  setAccessibleDescription(ToQString(preview.summary));
  update();
}

QSize PointsDiagram::sizeHint() const {
  return {200, 8 * fontMetrics().height()};
}

void PointsDiagram::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const int line = fontMetrics().height();
  const QRectF area = QRectF(rect()).adjusted(.5, line + .5, -.5, -line - .5);
  painter.fillRect(area, palette().base());
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(area);
  if (points_.size() < 2 || range_.width() <= 0) return;
  DrawCurve(painter, area.adjusted(4, 4, -4, -4));
  DrawLabels(painter, area);
}

void PointsDiagram::DrawCurve(QPainter& painter, const QRectF& area) const {
  QPolygonF curve;
  for (const QPointF& point : points_) {
    const double x = (point.x() - range_.left()) / range_.width();
    const double y = (point.y() - range_.top()) / range_.height();
    curve << QPointF(area.left() + x * area.width(), area.bottom() - y * area.height());
  }
  painter.setPen(QPen(palette().color(QPalette::Highlight), 1.6));
  painter.drawPolyline(curve);
  constexpr int kMostDots = 80;
  if (curve.size() > kMostDots) return;
  painter.setBrush(palette().color(QPalette::Highlight));
  for (const QPointF& point : curve) painter.drawEllipse(point, 1.8, 1.8);
}

void PointsDiagram::DrawLabels(QPainter& painter, const QRectF& area) const {
  painter.setPen(palette().color(QPalette::Text));
  const int line = fontMetrics().height();
  const QRectF above(area.left(), area.top() - line, area.width(), line);
  const QRectF below(area.left(), area.bottom() + 1, area.width(), line);
  painter.drawText(above, Qt::AlignLeft,
                   tr("%1 to %2 dB").arg(range_.bottom(), 0, 'g', 3).arg(range_.top(), 0, 'g', 3));
  painter.drawText(below, Qt::AlignLeft, QString::number(range_.left(), 'g', 6));
  painter.drawText(below, Qt::AlignRight, tr("%1 MHz").arg(range_.right(), 0, 'g', 6));
}

}  // namespace polefit

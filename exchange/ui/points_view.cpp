#include "exchange/ui/points_view.h"

#include <QFont>
#include <QPainter>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "exchange/read/decoding.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

constexpr double kLowestDecibel = -120;
constexpr int kPassbandColumns = 4;
constexpr int kDelayColumns = 2;
/// So many skipped lines are shown, and so much of each; the line below the table counts them all.
constexpr std::size_t kMostMarked = 200;
constexpr std::size_t kLongestMark = 100;

}  // namespace

void PointsModel::Show(const ImportPreview& preview, const ImportPlan& plan) {
  beginResetModel();
  hasPassband_ = !plan.isOnlyDelay;
  rows_ = preview.rows;
  delays_ = CellsOfPoints(preview.points.delays);
  Arrange(preview, plan);
  endResetModel();
}

void PointsModel::Arrange(const ImportPreview& preview, const ImportPlan& plan) {
  entries_.clear();
  const std::vector<std::string_view> lines = LinesOf(plan.source.text);
  const std::vector<int>& skipped = preview.points.skippedLines;
  const std::size_t marked = lines.empty() ? 0 : std::min(skipped.size(), kMostMarked);
  std::size_t next = 0;
  const auto mark = [&] {
    const auto line = static_cast<std::size_t>(skipped[next++]);
    const std::string_view text =
        FirstCharacters(lines[std::min(line, lines.size()) - 1], kLongestMark);
    entries_.push_back({0, tr("line %1 skipped: %2").arg(line).arg(ToQString(text).simplified())});
  };
  const Points& points = preview.points;
  const auto lineOf = [&](std::size_t row) {
    if (plan.isOnlyDelay) return points.delays[row].line;
    // Rows that were merged into the table have no line of their own.
    const bool hasLine = rows_.size() == points.passband.size() && row < rows_.size();
    return hasLine ? points.passband[row].line : 0;
  };
  for (std::size_t row = 0; row < std::max(rows_.size(), delays_.size()); ++row) {
    while (next < marked && skipped[next] < lineOf(row)) mark();
    entries_.push_back({row});
  }
  while (next < marked) mark();
}

std::vector<int> PointsModel::SkippedRows() const {
  std::vector<int> skipped;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (!entries_[i].skipped.isEmpty()) skipped.push_back(static_cast<int>(i));
  }
  return skipped;
}

int PointsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

int PointsModel::columnCount(const QModelIndex& parent) const {
  if (parent.isValid()) return 0;
  return (hasPassband_ ? kPassbandColumns : 0) + (delays_.empty() ? 0 : kDelayColumns);
}

QVariant PointsModel::CellOf(std::size_t row, std::size_t column) const {
  if (hasPassband_ && column < kPassbandColumns) {
    return row < rows_.size() ? ToQString(rows_[row].at(column)) : QVariant();
  }
  if (hasPassband_) column -= kPassbandColumns;
  return row < delays_.size() ? ToQString(delays_[row].at(column)) : QVariant();
}

QVariant PointsModel::data(const QModelIndex& index, int role) const {
  const Entry& entry = entries_[static_cast<std::size_t>(index.row())];
  const bool isSkipped = !entry.skipped.isEmpty();
  if (role == Qt::TextAlignmentRole) {
    return static_cast<int>((isSkipped ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
  }
  if (role == Qt::FontRole && isSkipped) {
    QFont font;
    font.setItalic(true);
    return font;
  }
  if (role != Qt::DisplayRole) return {};
  if (isSkipped) return index.column() == 0 ? entry.skipped : QVariant();
  return CellOf(entry.row, static_cast<std::size_t>(index.column()));
}

QVariant PointsModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) {
    const Entry& entry = entries_[static_cast<std::size_t>(section)];
    return entry.skipped.isEmpty() ? QString::number(entry.row + 1) : QString();
  }
  const QString titles[] = {tr("MHz"),    tr("Yin"),        tr("Yout"),
                            tr("Weight"), tr("Delay: MHz"), tr("TX, ns")};
  return titles[section + (hasPassband_ ? 0 : kPassbandColumns)];
}

void PointsDiagram::Show(const ImportPreview& preview, const ImportPlan& plan) {
  points_.clear();
  unit_ = plan.isOnlyDelay ? tr("ns") : tr("dB");
  if (plan.isOnlyDelay) {
    for (const DelayRow& row : preview.points.delays) {
      points_.emplace_back(row.frequency.value, row.tx.value);
    }
  } else {
    for (const PassbandRow& row : preview.points.passband) {
      const bool isYin = plan.choices.role == Role::equalise;
      const double value = std::abs(isYin ? row.yin.value : row.yout.value);
      points_.emplace_back(row.frequency.value, std::max(kLowestDecibel, Decibel(value)));
    }
  }
  Measure();
  update();
}

void PointsDiagram::Measure() {
  if (points_.empty()) return;
  double lowest = HUGE_VAL;
  double highest = -HUGE_VAL;
  for (const QPointF& point : points_) {
    lowest = std::min(lowest, point.y());
    highest = std::max(highest, point.y());
  }
  const double first = points_.front().x();
  range_ = QRectF(first, lowest, points_.back().x() - first, std::max(highest - lowest, 1e-3));
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
  painter.drawText(
      above, Qt::AlignLeft,
      tr("%1 to %2 %3").arg(range_.bottom(), 0, 'g', 3).arg(range_.top(), 0, 'g', 3).arg(unit_));
  painter.drawText(below, Qt::AlignLeft, QString::number(range_.left(), 'g', 6));
  painter.drawText(below, Qt::AlignRight, tr("%1 MHz").arg(range_.right(), 0, 'g', 6));
}

}  // namespace polefit

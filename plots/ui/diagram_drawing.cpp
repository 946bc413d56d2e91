// What a diagram consists of, and how it looks.

#include <algorithm>
#include <cmath>

#include "plots/ui/clipped_line.h"
#include "plots/ui/curve_style.h"
#include "plots/ui/diagram_view.h"
#include "plots/ui/logarithmic_ticker.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

QVector<double> AsVector(const std::vector<double>& values) {
  return {values.begin(), values.end()};
}

QSharedPointer<QCPAxisTicker> TickerOf(const Axis& axis) {
  return QSharedPointer<QCPAxisTicker>(axis.isLogarithmic ? new LogarithmicTicker
                                                          : new QCPAxisTicker);
}

void ApplyAxis(const Axis& from, QCPAxis& axis) {
  axis.setLabel(ToQString(from.label));
  axis.setScaleType(from.isLogarithmic ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
  axis.setTicker(TickerOf(from));
  axis.setNumberFormat("g");
  axis.setNumberPrecision(5);
}

/// Of marks along a curve: smaller where, in a pane of the usual width, so many would melt into a
/// band.
double MarkSize(double usual, std::size_t count) {
  constexpr double kLeast = 3.5;
  constexpr double kRoom = 1200;
  return std::min(usual, std::max(kLeast, kRoom / static_cast<double>(count)));
}

/// The figures of a low axis from -a to a: 0 and one on either side.
class ThreeFigures final : public QCPAxisTicker {
 protected:
  double getTickStep(const QCPRange& range) override {
    const double half = range.size() / 2;
    const double power = std::pow(10, std::floor(std::log10(half)));
    const double mantissa = half / power;
    return power * (mantissa >= 5 ? 5 : mantissa >= 2.5 ? 2.5 : mantissa >= 2 ? 2 : 1);
  }
};

QSharedPointer<QCPAxisTicker> WholeNumbers() {
  auto* ticker = new QCPAxisTickerFixed;
  ticker->setScaleStrategy(QCPAxisTickerFixed::ssMultiples);
  return QSharedPointer<QCPAxisTicker>(ticker);
}

}  // namespace

void DiagramView::Rebuild() {
  clearPlottables();
  clearItems();
  ApplyAxis(diagram_.x, *xAxis);
  ApplyAxis(diagram_.y, *yAxis);
  if (diagram_.kind == DiagramKind::orders) xAxis->setTicker(WholeNumbers());
  for (QCPAxis* axis : {xAxis, yAxis}) {
    axis->setTicks(diagram_.hasFigures);
    axis->setTickLabels(diagram_.hasFigures);
  }
  if (isCompact_) xAxis->setLabel({});
  PlaceAxes();
  updateLayout();  // names and figures may have changed the room
  FitFigures();
  for (const Frame& frame : diagram_.frames) AddFrame(frame);
  for (const double x : diagram_.verticals) AddStraight(x, true);
  for (const double y : diagram_.horizontals) AddStraight(y, false);
  for (const Ellipse& ellipse : diagram_.ellipses) AddEllipse(ellipse);
  const auto last = std::find_if(diagram_.series.rbegin(), diagram_.series.rend(),
                                 [](const Series& series) { return series.IsLine(); });
  for (const Series& series : diagram_.series) {
    AddSeries(series, last != diagram_.series.rend() && &series == &*last);
  }
  if (marked_) Mark(marked_);
  AddNote();
}

/// From edge to edge.
void DiagramView::AddStraight(double at, bool isVertical) {
  auto* line = new QCPItemStraightLine(this);
  line->setPen(
      QPen(ColorOf(SeriesRole::constant, palette()), 1, isVertical ? Qt::DotLine : Qt::SolidLine));
  line->point1->setCoords(isVertical ? at : 0, isVertical ? 0 : at);
  line->point2->setCoords(isVertical ? at : 1, isVertical ? 1 : at);
  for (QCPItemPosition* point : {line->point1, line->point2}) {
    if (isVertical) {
      point->setTypeY(QCPItemPosition::ptAxisRectRatio);
    } else {
      point->setTypeX(QCPItemPosition::ptAxisRectRatio);
    }
  }
}

/// Three sides of it: the lower one is an axis.
void DiagramView::AddFrame(const Frame& frame) {
  const QPointF corners[] = {{frame.left, frame.bottom},
                             {frame.left, frame.top},
                             {frame.right, frame.top},
                             {frame.right, frame.bottom}};
  for (int i = 0; i < 3; ++i) {
    auto* line = new QCPItemLine(this);
    line->setPen(QPen(ColorOf(SeriesRole::constant, palette()), 1, Qt::DashLine));
    line->start->setCoords(corners[i]);
    line->end->setCoords(corners[i + 1]);
  }
}

void DiagramView::AddEllipse(const Ellipse& ellipse) {
  auto* shape = new QCPItemEllipse(this);
  shape->setPen(QPen(ColorOf(ellipse.curve, palette()), 1.5));
  shape->topLeft->setCoords(ellipse.x - ellipse.width, ellipse.y + ellipse.height);
  shape->bottomRight->setCoords(ellipse.x + ellipse.width, ellipse.y - ellipse.height);
}

void DiagramView::AddSeries(const Series& series, bool isLastLine) {
  QCPGraph* graph = addGraph();
  // Sorting again what is in order takes a sixth of the redraw of 32,766 points.
  graph->setData(AsVector(series.x), AsVector(series.y), std::ranges::is_sorted(series.x));
  // Of so many rows a pixel shows the extremes; in a finer picture that would be steps.
  constexpr std::size_t kMany = 2000;
  graph->setAdaptiveSampling(series.x.size() > kMany);
  const double size = fontMetrics().height() * .55;
  // The strip below the curves shows an error a row, and thin lines to follow them; the rows of the
  // last curve, which are read out, have marks.
  const bool isStrip = diagram_.kind == DiagramKind::error && series.role != SeriesRole::worst;
  if (series.IsLine()) {
    QPen pen = PenOf(series, palette());
    if (isStrip) pen.setWidthF(1.2);
    graph->setPen(pen);
    if (isStrip && isLastLine && series.x.size() < 400) {
      graph->setScatterStyle(QCPScatterStyle(QCPScatterStyle::ssDisc, pen.color(), size * .5));
    }
  } else {
    graph->setLineStyle(QCPGraph::lsNone);
    const QCPScatterStyle mark = MarkOf(series, palette(), MarkSize(size, series.x.size()));
    graph->setPen(mark.pen());
    graph->setScatterStyle(mark);
  }
  graph->setName(ToQString(series.name));
  // In the legend a result has its mark too.
  if (series.role == SeriesRole::result && !isStrip) {
    Series marks = series;
    marks.role = SeriesRole::resultMarks;
    graph->setScatterStyle(MarkOf(marks, palette(), size));
    graph->setScatterSkip(static_cast<int>(series.x.size()));
  }
  if (series.name.empty()) return void(graph->removeFromLegend());
  // A hidden curve leaves its name, so that it can be shown again.
  if (series.x.empty()) {
    auto* entry = legend->itemWithPlottable(graph);
    QFont struckOut = legend->font();
    struckOut.setStrikeOut(true);
    entry->setFont(struckOut);
    entry->setTextColor(ColorOf(SeriesRole::constant, palette()));
  }
}

/// As many figures at the axes as there is room for, and no name that is longer than its axis:
/// its unit has to do.
void DiagramView::FitFigures() {
  constexpr int kMostFigures = 6;
  const QFontMetrics metrics(yAxis->tickLabelFont());
  const int wide = metrics.horizontalAdvance("-0.00005");
  xAxis->ticker()->setTickCount(std::clamp(axisRect()->width() / wide, 2, kMostFigures));
  constexpr int kLow = 7;  // lines of text
  if (diagram_.kind == DiagramKind::error) {
    const bool isLow = axisRect()->height() < kLow * metrics.height();
    yAxis->setTicker(QSharedPointer<QCPAxisTicker>(isLow ? new ThreeFigures : new QCPAxisTicker));
  }
  yAxis->ticker()->setTickCount(
      std::clamp(axisRect()->height() / (2 * metrics.height()), 3, kMostFigures));
  const QFontMetrics names(yAxis->labelFont());
  const auto fits = [&](const QString& name) {
    return names.horizontalAdvance(name) < axisRect()->height();
  };
  const QString label = ToQString(diagram_.y.label);
  const QString unit = label.section(", ", 1);
  yAxis->setLabel(fits(label) ? label : fits(unit) ? unit : QString());
}

/// The diagram that the keys act on has a frame.
void DiagramView::ShowFocus(bool hasFocus) {
  const QPen frame = hasFocus ? QPen(palette().color(QPalette::Highlight), 2)
                              : QPen(palette().color(QPalette::Text), 1);
  for (QCPAxis* axis : {xAxis, yAxis, xAxis2, yAxis2}) axis->setBasePen(frame);
  for (QCPAxis* axis : {xAxis2, yAxis2}) {
    axis->setVisible(hasFocus);
    axis->setTicks(false);
    axis->setTickLabels(false);
  }
  replot(rpQueuedReplot);
}

void DiagramView::PrepareForPicture() {
  ShowFocus(false);
  for (int i = 0; i < itemCount(); ++i) {
    if (item(i)->objectName() == "mark") item(i)->setVisible(false);
  }
  const QRectF room = QRectF(axisRect()->rect()).adjusted(-1, -1, 1, 1);
  for (int i = 0; i < graphCount(); ++i) {
    std::vector<QPointF> points;
    for (const QCPGraphData& value : *graph(i)->data()) {
      points.emplace_back(xAxis->coordToPixel(value.key), yAxis->coordToPixel(value.value));
    }
    if (graph(i)->lineStyle() == QCPGraph::lsNone) {
      std::erase_if(points, [&room](const QPointF& point) { return !room.contains(point); });
    } else {
      points = ClippedLine(points, room);
    }
    QVector<double> x;
    QVector<double> y;
    for (const QPointF& point : points) {
      x << xAxis->pixelToCoord(point.x());
      y << yAxis->pixelToCoord(point.y());
    }
    graph(i)->setData(x, y);
  }
}

void DiagramView::ApplyStyle() {
  const QColor text = palette().color(QPalette::Text);
  const QColor base = palette().color(QPalette::Base);
  QColor grid = text;
  grid.setAlpha(32);
  setBackground(base);
  QFont small = font();
  small.setPointSizeF(small.pointSizeF() * .92);
  for (QCPAxis* axis : {xAxis, yAxis, xAxis2, yAxis2}) {
    axis->setBasePen(QPen(text, 1));
    axis->setTickPen(QPen(text, 1));
    axis->setSubTickPen(QPen(text, 1));
    axis->setTickLabelColor(text);
    axis->setLabelColor(text);
    axis->setTickLabelFont(small);
    axis->setLabelFont(small);
    axis->grid()->setPen(QPen(grid, 1));
    axis->grid()->setZeroLinePen(QPen(grid, 1));
  }
  legend->setFont(small);
  legend->setTextColor(text);
  QColor ground = base;
  ground.setAlpha(225);
  legend->setBrush(ground);
  legend->setBorderPen(QPen(grid, 1));
  legend->setRowSpacing(2);
  // The library draws a line 5 pixels too long there, which not every format clips.
  legend->setIconTextPadding(10);
  // The text stands at the top of its row: the icon is as high.
  legend->setIconSize(legend->iconSize().width(), QFontMetrics(small).height());
  const int line = fontMetrics().height();
  // As wide in every diagram, so that equal frequencies stand below each other.
  const int left = fontMetrics().horizontalAdvance("-0.0005") + line * 2;
  // Half a figure stands above the upper end of an axis.
  const int top = line / 2 + 2;
  axisRect()->setMargins(QMargins(left, top, line, 0));
  axisRect()->setMinimumMargins(QMargins(left, top, line, line / 4));
}

}  // namespace polefit

#include "plots/ui/diagram_view.h"

#include <QRubberBand>
#include <algorithm>
#include <cmath>

#include "plots/ui/curve_style.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

/// How near in pixels the pointer must come.
constexpr double kReach = 12;

QVector<double> AsVector(const std::vector<double>& values) {
  return {values.begin(), values.end()};
}

QSharedPointer<QCPAxisTicker> TickerOf(const Axis& axis) {
  // Less than one and a half decades have no powers of ten to speak of.
  if (axis.isLogarithmic && axis.to > 30 * axis.from) {
    return QSharedPointer<QCPAxisTickerLog>(new QCPAxisTickerLog);
  }
  return QSharedPointer<QCPAxisTicker>(new QCPAxisTicker);
}

void ApplyAxis(const Axis& from, QCPAxis& axis) {
  axis.setLabel(ToQString(from.label));
  axis.setScaleType(from.isLogarithmic ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
  axis.setTicker(TickerOf(from));
  axis.setNumberFormat("g");
  axis.setNumberPrecision(5);
}

bool IsSame(const Axis& one, const Axis& other) {
  return one.label == other.label && one.from == other.from && one.to == other.to &&
         one.isLogarithmic == other.isLogarithmic;
}

}  // namespace

DiagramView::DiagramView(QWidget* parent)
    : QCustomPlot(parent), zoomBox_(new QRubberBand(QRubberBand::Rectangle, this)) {
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setNoAntialiasingOnDrag(false);
  axisRect()->setAutoMargins(QCP::msTop | QCP::msBottom);
  ApplyStyle();
}

bool DiagramView::HasFrequencies() const {
  return diagram_.kind != DiagramKind::poles && diagram_.kind != DiagramKind::step;
}

void DiagramView::Show(const Diagram& diagram) {
  const bool keepsView = (isZoomed_ || drag_ == Drag::stop) && diagram.kind == diagram_.kind &&
                         (drag_ == Drag::stop || IsSame(diagram.x, diagram_.x)) &&
                         diagram.y.label == diagram_.y.label;
  const QCPRange x = xAxis->range();
  const QCPRange y = yAxis->range();
  if (diagram.kind != diagram_.kind) marked_.reset();
  diagram_ = diagram;
  if (marked_ && *marked_ >= diagram_.stops.size()) marked_.reset();
  isZoomed_ = keepsView;
  Rebuild();
  if (keepsView) {
    xAxis->setRange(x);
    yAxis->setRange(y);
  }
  setAccessibleName(ToQString(diagram.sentence));
  replot(rpQueuedReplot);
}

void DiagramView::Rebuild() {
  clearPlottables();
  clearItems();
  ApplyAxis(diagram_.x, *xAxis);
  ApplyAxis(diagram_.y, *yAxis);
  if (isCompact_) xAxis->setLabel({});
  PlaceAxes();
  for (const Frame& frame : diagram_.frames) {
    const QPointF corners[] = {{frame.left, frame.bottom},
                               {frame.left, frame.top},
                               {frame.right, frame.top},
                               {frame.right, frame.bottom}};
    for (int i = 0; i < 3; ++i) AddLine(corners[i], corners[i + 1], true);
  }
  for (const double x : diagram_.verticals) {
    auto* line = new QCPItemStraightLine(this);
    line->setPen(QPen(ColorOf(SeriesRole::constant, palette()), 1, Qt::DotLine));
    line->point1->setCoords(x, 0);
    line->point2->setCoords(x, 1);
    line->point1->setTypeY(QCPItemPosition::ptAxisRectRatio);
    line->point2->setTypeY(QCPItemPosition::ptAxisRectRatio);
  }
  for (const double y : diagram_.horizontals) {
    auto* line = new QCPItemStraightLine(this);
    line->setPen(QPen(ColorOf(SeriesRole::constant, palette()), 1));
    line->point1->setCoords(0, y);
    line->point2->setCoords(1, y);
    line->point1->setTypeX(QCPItemPosition::ptAxisRectRatio);
    line->point2->setTypeX(QCPItemPosition::ptAxisRectRatio);
  }
  for (const Series& series : diagram_.series) AddSeries(series);
  if (marked_) Mark(marked_);
  AddNote();
  PlaceLegend();
}

void DiagramView::AddSeries(const Series& series) {
  QCPGraph* graph = addGraph();
  graph->setData(AsVector(series.x), AsVector(series.y));
  const double size = fontMetrics().height() * .55;
  // The strip below the curves shows an error a row: marks, and a thin line to follow them.
  const bool isStrip = diagram_.kind == DiagramKind::error && series.role != SeriesRole::worst;
  if (series.IsLine()) {
    QPen pen = PenOf(series, palette());
    if (isStrip) pen.setWidthF(1.2);
    graph->setPen(pen);
    if (isStrip && series.x.size() < 400) {
      graph->setScatterStyle(QCPScatterStyle(QCPScatterStyle::ssDisc, pen.color(), size * .5));
    }
  } else {
    graph->setLineStyle(QCPGraph::lsNone);
    graph->setPen(MarkOf(series, palette(), size).pen());
    graph->setScatterStyle(MarkOf(series, palette(), size));
  }
  graph->setName(ToQString(series.name));
  if (series.name.empty()) graph->removeFromLegend();
}

void DiagramView::AddLine(const QPointF& from, const QPointF& to, bool isFrame) {
  auto* line = new QCPItemLine(this);
  line->setPen(
      QPen(ColorOf(SeriesRole::constant, palette()), 1, isFrame ? Qt::DashLine : Qt::SolidLine));
  line->start->setCoords(from);
  line->end->setCoords(to);
}

void DiagramView::AddNote() {
  if (diagram_.note.empty()) return;
  auto* text = new QCPItemText(this);
  text->setText(ToQString(diagram_.note));
  text->setFont(font());
  const bool isWorst = diagram_.kind == DiagramKind::error;
  text->setColor(isWorst ? ColorOf(SeriesRole::worst, palette()) : palette().color(QPalette::Text));
  text->position->setType(QCPItemPosition::ptAxisRectRatio);
  text->setPositionAlignment(isWorst ? Qt::AlignLeft | Qt::AlignTop
                                     : Qt::AlignHCenter | Qt::AlignTop);
  text->position->setCoords(isWorst ? .01 : .5, .02);
  QColor ground = palette().color(QPalette::Base);
  ground.setAlpha(210);
  text->setBrush(ground);
  text->setPadding(QMargins(3, 0, 3, 0));
}

/// Into the corner where the fewest marks and curves lie.
void DiagramView::PlaceLegend() {
  legend->setVisible(showsLegend_ && !isCompact_ && legend->itemCount() > 0);
  if (!legend->visible()) return;
  const std::pair<bool, bool> corners[] = {
      {false, false}, {true, true}, {true, false}, {false, true}};  // right, top
  int fewest = -1;
  Qt::Alignment best = Qt::AlignLeft | Qt::AlignBottom;
  for (const auto& [isRight, isTop] : corners) {
    int count = 0;
    for (const Series& series : diagram_.series) {
      for (std::size_t i = 0; i < series.x.size(); ++i) {
        const double x = (series.x[i] - diagram_.x.from) / (diagram_.x.to - diagram_.x.from);
        const double y = (series.y[i] - diagram_.y.from) / (diagram_.y.to - diagram_.y.from);
        if ((isRight ? x > .55 : x < .45) && (isTop ? y > .65 : y < .35) && y >= 0) ++count;
      }
    }
    if (fewest >= 0 && count >= fewest) continue;
    fewest = count;
    best = (isRight ? Qt::AlignRight : Qt::AlignLeft) | (isTop ? Qt::AlignTop : Qt::AlignBottom);
  }
  axisRect()->insetLayout()->setInsetAlignment(0, best);
}

void DiagramView::PlaceAxes() {
  xAxis->setRange(diagram_.x.from, diagram_.x.to);
  yAxis->setRange(diagram_.y.from, diagram_.y.to);
  if (!diagram_.hasEqualScales) return;
  const double width = std::max(1, axisRect()->width());
  const double height = std::max(1, axisRect()->height());
  const double perPixel = std::max((diagram_.x.to - diagram_.x.from) / width,
                                   (diagram_.y.to - diagram_.y.from) / height);
  const double middle = (diagram_.x.from + diagram_.x.to) / 2;
  xAxis->setRange(middle - perPixel * width / 2, middle + perPixel * width / 2);
  yAxis->setRange(diagram_.y.from, diagram_.y.from + perPixel * height);
}

void DiagramView::FitView() {
  isZoomed_ = false;
  PlaceAxes();
  TellFrequencies();
  replot(rpQueuedReplot);
}

void DiagramView::SetFrequencies(double from, double to) {
  if (!HasFrequencies()) return;
  if (xAxis->range().lower == from && xAxis->range().upper == to) return;
  isZoomed_ = from != diagram_.x.from || to != diagram_.x.to;
  xAxis->setRange(from, to);
  replot(rpQueuedReplot);
}

void DiagramView::TellFrequencies() {
  if (HasFrequencies()) Q_EMIT frequenciesChanged(xAxis->range().lower, xAxis->range().upper);
}

QPointF DiagramView::PositionOf(std::size_t stop) const {
  const Stop& at = diagram_.stops[stop];
  return {xAxis->coordToPixel(at.x), yAxis->coordToPixel(at.y)};
}

std::optional<std::size_t> DiagramView::StopNear(const QPointF& position) const {
  std::optional<std::size_t> nearest;
  double least = kReach * kReach;
  for (std::size_t i = 0; i < diagram_.stops.size(); ++i) {
    const QPointF way = PositionOf(i) - position;
    const double square = QPointF::dotProduct(way, way);
    if (square > least) continue;
    least = square;
    nearest = i;
  }
  return nearest;
}

void DiagramView::Mark(std::optional<std::size_t> stop) {
  for (int i = itemCount() - 1; i >= 0; --i) {
    if (item(i)->objectName() == "mark") removeItem(item(i));
  }
  marked_ = stop && *stop < diagram_.stops.size() ? stop : std::nullopt;
  if (marked_) {
    auto* ring = new QCPItemEllipse(this);
    ring->setObjectName("mark");
    ring->setPen(QPen(palette().color(QPalette::Highlight), 2));
    const double size = fontMetrics().height() * .5;
    auto* anchor = new QCPItemTracer(this);
    anchor->setObjectName("mark");
    anchor->setStyle(QCPItemTracer::tsNone);
    anchor->position->setCoords(diagram_.stops[*marked_].x, diagram_.stops[*marked_].y);
    for (QCPItemPosition* corner : {ring->topLeft, ring->bottomRight}) {
      corner->setType(QCPItemPosition::ptAbsolute);
      corner->setParentAnchor(anchor->position);
      const double sign = corner == ring->topLeft ? -1 : 1;
      corner->setCoords(sign * size, sign * size);
    }
  }
  replot(rpQueuedReplot);
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
  legend->setRowSpacing(0);
  const int line = fontMetrics().height();
  // As wide in every diagram, so that equal frequencies stand below each other.
  const int left = fontMetrics().horizontalAdvance("-0.0005") + line * 2;
  axisRect()->setMargins(QMargins(left, line / 2, line, 0));
  axisRect()->setMinimumMargins(QMargins(left, line / 2, line, line / 4));
}

void DiagramView::changeEvent(QEvent* event) {
  QCustomPlot::changeEvent(event);
  if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange) return;
  ApplyStyle();
  Rebuild();
  replot(rpQueuedReplot);
}

void DiagramView::resizeEvent(QResizeEvent* event) {
  QCustomPlot::resizeEvent(event);
  if (!diagram_.hasEqualScales || isZoomed_) return;
  replot();  // lays the axis rectangle out
  PlaceAxes();
  replot(rpQueuedReplot);
}

}  // namespace polefit

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
/// What is typed can be moved: it is found under a result that is not so much nearer.
constexpr double kTypedFirst = 4;

bool HasFrequencies(DiagramKind kind) {
  return kind != DiagramKind::poles && kind != DiagramKind::step && kind != DiagramKind::orders;
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
  grabGesture(Qt::PinchGesture);
  setNoAntialiasingOnDrag(false);
  axisRect()->setAutoMargins(QCP::msTop | QCP::msBottom);
  for (QCPAxis* axis : {xAxis, yAxis}) {
    connect(axis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this, &DiagramView::ShowMark);
  }
  ApplyStyle();
}

bool DiagramView::HasFrequencies() const {
  return polefit::HasFrequencies(diagram_.kind);
}

void DiagramView::Show(const Diagram& diagram) {
  const bool isSameKind = diagram.kind == diagram_.kind;
  const bool isOfFrequencies = HasFrequencies() && polefit::HasFrequencies(diagram.kind);
  const bool isSameAcross = (isSameKind || isOfFrequencies) && IsSame(diagram.x, diagram_.x);
  if (!isSameAcross) isZoomedAcross_ = false;
  const bool isSameUp = isSameKind && diagram.y.label == diagram_.y.label;
  if (!isSameUp || (diagram.hasEqualScales && !isZoomedAcross_)) isZoomedUp_ = false;
  if (!isSameKind) marked_.reset();
  diagram_ = diagram;
  if (marked_ && *marked_ >= diagram_.stops.size()) marked_.reset();
  Rebuild();
  if (diagram_.hasEqualScales) PlaceAxes();
  PlaceLegend();
  SetReadOut(ToQString(diagram.sentence));
  replot(rpQueuedReplot);
}

void DiagramView::SetReadOut(const QString& text) {
  setAccessibleName(text);
  setAccessibleDescription(ToQString(diagram_.sentence));
}

void DiagramView::PlaceAxes() {
  if (drag_ == Drag::stop) return;  // the ground stays under the hand
  if (diagram_.hasEqualScales) return PlaceEqualAxes();
  if (!isZoomedAcross_) xAxis->setRange(diagram_.x.from, diagram_.x.to);
  if (!isZoomedUp_) yAxis->setRange(diagram_.y.from, diagram_.y.to);
}

void DiagramView::PlaceEqualAxes() {
  if (isZoomedAcross_) return yAxis->setScaleRatio(xAxis, 1);
  const double width = std::max(1, axisRect()->width());
  const double height = std::max(1, axisRect()->height());
  const double perPixel = std::max((diagram_.x.to - diagram_.x.from) / width,
                                   (diagram_.y.to - diagram_.y.from) / height);
  const double middle = (diagram_.x.from + diagram_.x.to) / 2;
  xAxis->setRange(middle - perPixel * width / 2, middle + perPixel * width / 2);
  yAxis->setRange(diagram_.y.from, diagram_.y.from + perPixel * height);
}

void DiagramView::FitView() {
  isZoomedAcross_ = isZoomedUp_ = false;
  PlaceAxes();
  ShowNewView();
}

void DiagramView::SetFrequencies(double from, double to) {
  if (!HasFrequencies()) return;
  if (xAxis->range().lower == from && xAxis->range().upper == to) return;
  isZoomedAcross_ = from != diagram_.x.from || to != diagram_.x.to;
  xAxis->setRange(from, to);
  PlaceLegend();
  replot(rpQueuedReplot);
}

void DiagramView::ShowNewView() {
  PlaceLegend();
  if (HasFrequencies()) Q_EMIT frequenciesChanged(xAxis->range().lower, xAxis->range().upper);
  replot(rpQueuedReplot);
}

QPointF DiagramView::ValuesAt(const QPointF& position) const {
  return {xAxis->pixelToCoord(position.x()), yAxis->pixelToCoord(position.y())};
}

QPointF DiagramView::PositionOf(std::size_t stop) const {
  const Stop& at = diagram_.stops[stop];
  return {xAxis->coordToPixel(at.x), yAxis->coordToPixel(at.y)};
}

std::optional<std::size_t> DiagramView::StopNear(const QPointF& position) const {
  std::optional<std::size_t> nearest;
  double least = kReach;
  for (std::size_t i = 0; i < diagram_.stops.size(); ++i) {
    const QPointF way = PositionOf(i) - position;
    const double distance =
        std::hypot(way.x(), way.y()) + (diagram_.stops[i].curve == 0 ? 0 : kTypedFirst);
    if (!(distance < least)) continue;
    least = distance;
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
    ring->setClipToAxisRect(false);
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
    ShowMark();
  }
  replot(rpQueuedReplot);
}

/// The ring may stand over the axes, but not round a place that they do not show.
void DiagramView::ShowMark() {
  if (!marked_) return;
  const Stop& at = diagram_.stops[*marked_];
  const bool isSeen = xAxis->range().contains(at.x) && yAxis->range().contains(at.y);
  for (int i = 0; i < itemCount(); ++i) {
    if (item(i)->objectName() == "mark") item(i)->setVisible(isSeen);
  }
}

void DiagramView::changeEvent(QEvent* event) {
  QCustomPlot::changeEvent(event);
  if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange) return;
  ApplyStyle();
  Rebuild();
  ShowFocus(hasFocus());
  PlaceLegend();
  replot(rpQueuedReplot);
}

void DiagramView::resizeEvent(QResizeEvent* event) {
  QCustomPlot::resizeEvent(event);
  updateLayout();
  FitFigures();
  PlaceAxes();
  PlaceLegend();
  replot(rpQueuedReplot);
}

}  // namespace polefit

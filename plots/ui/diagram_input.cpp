// What mouse and keys do in a diagram.

#include <QGestureEvent>
#include <QNativeGestureEvent>
#include <QPinchGesture>
#include <QRubberBand>
#include <QTimer>
#include <algorithm>
#include <cmath>

#include "plots/ui/diagram_view.h"

namespace polefit {

namespace {

constexpr double kZoomStep = 1.25;
constexpr double kPanShare = .1;
/// A press that moves no farther is a click.
constexpr int kClickReach = 3;

}  // namespace

void DiagramView::mousePressEvent(QMouseEvent* event) {
  setFocus(Qt::MouseFocusReason);
  pressedAt_ = lastAt_ = event->position();
  pressed_ = StopNear(pressedAt_);
  const bool movesStop =
      pressed_ && diagram_.kind == DiagramKind::poles && diagram_.stops[*pressed_].curve == 0;
  const bool isPan =
      event->button() == Qt::MiddleButton || (event->modifiers() & Qt::ShiftModifier && !movesStop);
  if (event->button() == Qt::RightButton) return event->ignore();
  drag_ = isPan ? Drag::pan : movesStop ? Drag::stop : Drag::zoom;
}

void DiagramView::mouseMoveEvent(QMouseEvent* event) {
  const QPointF at = event->position();
  if (drag_ == Drag::none || !(event->buttons() & (Qt::LeftButton | Qt::MiddleButton))) {
    Q_EMIT stopReached(StopNear(at));
    return;
  }
  const bool isClick = (at - pressedAt_).manhattanLength() <= kClickReach;
  if (drag_ == Drag::zoom && !isClick) {
    zoomBox_->setGeometry(DrawnBox(at).toRect());
    zoomBox_->show();
  } else if (drag_ == Drag::pan) {
    Pan(lastAt_.x() - at.x(), at.y() - lastAt_.y());
  } else if (drag_ == Drag::stop && !isClick) {
    const QPointF to = Dragged(at, event->modifiers() & Qt::ShiftModifier);
    Q_EMIT stopDragged(*pressed_, to.x(), to.y(), false);
  }
  lastAt_ = at;
}

/// Where a dragged location comes to: with Shift a tenth of the mouse's way.
QPointF DiagramView::Dragged(const QPointF& position, bool isFine) const {
  const QPointF way = (position - pressedAt_) * (isFine ? .1 : 1);
  const QPointF to = pressedAt_ + way;
  return {xAxis->pixelToCoord(to.x()), yAxis->pixelToCoord(to.y())};
}

void DiagramView::mouseReleaseEvent(QMouseEvent* event) {
  const QPointF at = event->position();
  const Drag ended = std::exchange(drag_, Drag::none);
  const bool isClick = (at - pressedAt_).manhattanLength() <= kClickReach;
  zoomBox_->hide();
  if (ended == Drag::none) return;  // it was given up
  if (isClick && pressed_) {
    Mark(pressed_);
    Q_EMIT stopReached(pressed_);
    Q_EMIT stopChosen(*pressed_);
  } else if (isClick) {
    for (int i = 0; i < legend->itemCount(); ++i) {
      auto* entry = qobject_cast<QCPPlottableLegendItem*>(legend->item(i));
      if (legend->visible() && entry != nullptr && entry->selectTest(at, false) >= 0) {
        Q_EMIT curveClicked(entry->plottable()->name());
      }
    }
  } else if (ended == Drag::zoom) {
    EndZoomBox(at);
  } else if (ended == Drag::stop && pressed_) {
    const QPointF to = Dragged(at, event->modifiers() & Qt::ShiftModifier);
    Q_EMIT stopDragged(*pressed_, to.x(), to.y(), true);
  }
}

/// The box that was drawn, as far as it lies between the axes.
QRectF DiagramView::DrawnBox(const QPointF& at) const {
  return QRectF(pressedAt_, at).normalized() & QRectF(axisRect()->rect());
}

/// A box that is hardly more than a line is one axis's alone.
void DiagramView::EndZoomBox(const QPointF& at) {
  constexpr double kLeast = 8;
  const QRectF box = DrawnBox(at);
  const bool isWide = box.width() >= kLeast;
  const bool isHigh = box.height() >= kLeast;
  if (!isWide && (!isHigh || diagram_.hasEqualScales)) return;
  isZoomedAcross_ = isZoomedAcross_ || isWide;
  isZoomedUp_ = isZoomedUp_ || isHigh || diagram_.hasEqualScales;
  if (isWide) {
    xAxis->setRange(xAxis->pixelToCoord(box.left()), xAxis->pixelToCoord(box.right()));
  }
  if (isHigh && !diagram_.hasEqualScales) {
    yAxis->setRange(yAxis->pixelToCoord(box.bottom()), yAxis->pixelToCoord(box.top()));
  } else if (diagram_.hasEqualScales) {
    const double middle = yAxis->pixelToCoord(box.center().y());
    yAxis->setScaleRatio(xAxis, 1);
    yAxis->setRange(middle, yAxis->range().size(), Qt::AlignCenter);
  }
  ShowNewView();
}

void DiagramView::mouseDoubleClickEvent(QMouseEvent* event) {
  event->accept();
  Q_EMIT wholePaneWanted();
}

void DiagramView::wheelEvent(QWheelEvent* event) {
  event->accept();
  Zoom(std::pow(kZoomStep, -event->angleDelta().y() / 120.0), event->position());
}

/// Two fingers on a touch screen, or on a touch pad.
bool DiagramView::Pinch(QEvent& event) {
  if (event.type() == QEvent::NativeGesture) {
    const auto& gesture = static_cast<QNativeGestureEvent&>(event);
    if (gesture.gestureType() != Qt::ZoomNativeGesture) return false;
    Zoom(1 / std::max(.1, 1 + gesture.value()), gesture.position());
    return true;
  }
  auto& gestures = static_cast<QGestureEvent&>(event);
  auto* pinch = static_cast<QPinchGesture*>(gestures.gesture(Qt::PinchGesture));
  if (pinch == nullptr || pinch->scaleFactor() <= 0) return false;
  drag_ = Drag::none;
  zoomBox_->hide();
  Zoom(1 / pinch->scaleFactor(), mapFromGlobal(pinch->centerPoint()));
  return true;
}

/// By a key the menu is of what is marked, wherever the pointer or the middle is.
bool DiagramView::AsksForMenuByKey(const QEvent& event) {
  if (event.type() != QEvent::ContextMenu || !marked_) return false;
  if (static_cast<const QContextMenuEvent&>(event).reason() != QContextMenuEvent::Keyboard) {
    return false;
  }
  Q_EMIT customContextMenuRequested(PositionOf(*marked_).toPoint());
  return true;
}

bool DiagramView::event(QEvent* event) {
  if (AsksForMenuByKey(*event)) {
    event->accept();
    return true;
  }
  const bool isPinch = event->type() == QEvent::NativeGesture || event->type() == QEvent::Gesture;
  if (!isPinch || !Pinch(*event)) return QCustomPlot::event(event);
  event->accept();
  return true;
}

void DiagramView::Zoom(double factor, const QPointF& at) {
  isZoomedAcross_ = true;
  isZoomedUp_ = isZoomedUp_ || diagram_.hasEqualScales;
  xAxis->scaleRange(factor, xAxis->pixelToCoord(at.x()));
  // Frequencies are what one zooms into; the other axis keeps its place, but on the s-plane.
  if (diagram_.hasEqualScales) yAxis->scaleRange(factor, yAxis->pixelToCoord(at.y()));
  ShowNewView();
}

/// Moves the view by so many pixels over what it shows.
void DiagramView::Pan(double right, double up) {
  const bool isEqual = diagram_.hasEqualScales;
  isZoomedAcross_ = isZoomedAcross_ || isEqual || right != 0;
  isZoomedUp_ = isZoomedUp_ || isEqual || up != 0;
  const QCPAxisRect& room = *axisRect();
  xAxis->setRange(xAxis->pixelToCoord(room.left() + right),
                  xAxis->pixelToCoord(room.left() + room.width() + right));
  yAxis->setRange(yAxis->pixelToCoord(room.bottom() - up),
                  yAxis->pixelToCoord(room.bottom() - room.height() - up));
  ShowNewView();
}

void DiagramView::Step(int count) {
  if (diagram_.stops.empty()) return;
  const auto last = static_cast<int>(diagram_.stops.size()) - 1;
  const int from = marked_ ? static_cast<int>(*marked_) : (count > 0 ? -1 : last + 1);
  Mark(static_cast<std::size_t>(std::clamp(from + count, 0, last)));
  Q_EMIT stopReached(marked_);
}

/// Ctrl+Shift and an arrow move the marked location by 1 % of its distance from 0.
bool DiagramView::MovesStop(const QKeyEvent& event) {
  constexpr double kShare = .01;
  const Qt::KeyboardModifiers held = event.modifiers() & ~Qt::KeypadModifier;
  if (held != (Qt::ControlModifier | Qt::ShiftModifier)) return false;
  if (diagram_.kind != DiagramKind::poles || !marked_) return false;
  const Stop& at = diagram_.stops[*marked_];
  const double way = kShare * std::hypot(at.x, at.y);
  double x = at.x;
  double y = at.y;
  if (event.key() == Qt::Key_Left) x -= way;
  if (event.key() == Qt::Key_Right) x += way;
  if (event.key() == Qt::Key_Up) y += way;
  if (event.key() == Qt::Key_Down) y -= way;
  if (x == at.x && y == at.y) return false;
  Q_EMIT stopDragged(*marked_, x, y, true);
  return true;
}

/// What the mouse is at, or else the whole pane.
void DiagramView::GiveUp() {
  zoomBox_->hide();
  const Drag given = std::exchange(drag_, Drag::none);
  if (given == Drag::stop) Q_EMIT dragAbandoned();
  if (given == Drag::none) Q_EMIT normalPaneWanted();
}

void DiagramView::keyPressEvent(QKeyEvent* event) {
  if (MovesStop(*event)) return;
  const bool isPan = event->modifiers() & Qt::ControlModifier;
  const int step = event->modifiers() & Qt::ShiftModifier ? 10 : 1;
  const double width = axisRect()->width() * kPanShare;
  const double height = axisRect()->height() * kPanShare;
  const QPointF middle = axisRect()->center();
  switch (event->key()) {
    case Qt::Key_Left:
      return isPan ? Pan(-width, 0) : Step(-step);
    case Qt::Key_Right:
      return isPan ? Pan(width, 0) : Step(step);
    case Qt::Key_Up:
      return isPan ? Pan(0, height) : QCustomPlot::keyPressEvent(event);
    case Qt::Key_Down:
      return isPan ? Pan(0, -height) : QCustomPlot::keyPressEvent(event);
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      return Zoom(1 / kZoomStep, middle);
    case Qt::Key_Minus:
      return Zoom(kZoomStep, middle);
    case Qt::Key_Home:
      return FitView();
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return wholePaneWanted();
    case Qt::Key_Escape:
      return GiveUp();
    case Qt::Key_Space:
      return curveClicked({});
    default:
      QCustomPlot::keyPressEvent(event);
  }
}

void DiagramView::focusInEvent(QFocusEvent* event) {
  QCustomPlot::focusInEvent(event);
  ShowFocus(true);
  // When it is here to stay: a tab that is left passes it on for a moment.
  QTimer::singleShot(0, this, [this] {
    if (hasFocus()) Q_EMIT stopReached(marked_);
  });
}

void DiagramView::focusOutEvent(QFocusEvent* event) {
  QCustomPlot::focusOutEvent(event);
  ShowFocus(false);
  const bool isForAWhile = event->reason() == Qt::PopupFocusReason ||
                           event->reason() == Qt::ActiveWindowFocusReason || underMouse();
  if (!isForAWhile) Q_EMIT stopReached(std::nullopt);
}

void DiagramView::leaveEvent(QEvent* event) {
  QCustomPlot::leaveEvent(event);
  Q_EMIT stopReached(hasFocus() ? marked_ : std::nullopt);
}

}  // namespace polefit

#include "plots/ui/legend_place.h"

#include <QLineF>
#include <algorithm>
#include <array>
#include <utility>

namespace polefit {

namespace {

/// A mark reaches so far round its point, in pixels.
constexpr double kMark = 5;

QRectF Placed(const QRectF& room, const QSizeF& size, Qt::Alignment place) {
  QRectF rect(room.topLeft(), size);
  if (place & Qt::AlignRight) rect.moveRight(room.right());
  if (place & Qt::AlignHCenter) rect.moveLeft(room.center().x() - size.width() / 2);
  if (place & Qt::AlignBottom) rect.moveBottom(room.bottom());
  if (place & Qt::AlignVCenter) rect.moveTop(room.center().y() - size.height() / 2);
  return rect;
}

/// Whether a piece of a line passes through a rectangle that holds neither of its ends.
bool Crosses(const QRectF& rect, const QLineF& piece) {
  const QPointF corners[] = {rect.topLeft(), rect.topRight(), rect.bottomRight(),
                             rect.bottomLeft()};
  for (int i = 0; i < 4; ++i) {
    if (piece.intersects({corners[i], corners[(i + 1) % 4]}, nullptr) ==
        QLineF::BoundedIntersection) {
      return true;
    }
  }
  return false;
}

bool IsCovered(const QRectF& rect, const std::vector<QPointF>& line) {
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (rect.contains(line[i])) return true;
    // Most pieces are far off: only those that could touch it are cut with its edges.
    if (i == 0 || std::max(line[i - 1].x(), line[i].x()) < rect.left() ||
        std::min(line[i - 1].x(), line[i].x()) > rect.right()) {
      continue;
    }
    if (Crosses(rect, {line[i - 1], line[i]})) return true;
  }
  return false;
}

bool IsFree(const QRectF& place, const Obstacles& obstacles, double gap) {
  const QRectF rect = place.adjusted(-gap, -gap, gap, gap);
  const auto holds = [&rect](const QPointF& mark) { return rect.contains(mark); };
  const auto meets = [&rect](const QRectF& text) { return rect.intersects(text); };
  const auto covers = [&rect](const std::vector<QPointF>& line) { return IsCovered(rect, line); };
  return std::none_of(obstacles.marks.begin(), obstacles.marks.end(), holds) &&
         std::none_of(obstacles.texts.begin(), obstacles.texts.end(), meets) &&
         std::none_of(obstacles.lines.begin(), obstacles.lines.end(), covers);
}

}  // namespace

std::optional<Qt::Alignment> FreeLegendPlace(const QRectF& room, const QSizeF& size,
                                             const Obstacles& obstacles, Qt::Alignment present) {
  const std::array<Qt::Alignment, 10> places = {present,
                                                Qt::AlignLeft | Qt::AlignBottom,
                                                Qt::AlignRight | Qt::AlignTop,
                                                Qt::AlignHCenter | Qt::AlignBottom,
                                                Qt::AlignRight | Qt::AlignBottom,
                                                Qt::AlignLeft | Qt::AlignTop,
                                                Qt::AlignHCenter | Qt::AlignTop,
                                                Qt::AlignLeft | Qt::AlignVCenter,
                                                Qt::AlignRight | Qt::AlignVCenter,
                                                Qt::AlignCenter};
  for (const Qt::Alignment place : places) {
    if (place && IsFree(Placed(room, size, place), obstacles, kMark)) return place;
  }
  return std::nullopt;
}

std::optional<QPointF> FreeNotePlace(const QRectF& room, const QSizeF& size,
                                     const Obstacles& obstacles, Qt::Edge first) {
  // Beside a line of its own size, in a strip that is hardly higher than the text.
  constexpr double kGap = 3;
  constexpr std::array kShares = {1., .5, 0., .75, .25, .875, .625, .375, .125};
  const double way = room.width() - size.width();
  std::array tops = {room.top(), room.bottom() - size.height()};
  if (first == Qt::BottomEdge) std::swap(tops[0], tops[1]);
  for (const double top : tops) {
    for (const double share : kShares) {
      const QPointF corner(room.left() + share * way, top);
      if (IsFree({corner, size}, obstacles, kGap)) return corner;
    }
  }
  return std::nullopt;
}

}  // namespace polefit

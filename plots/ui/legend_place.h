#pragma once

#include <QPointF>
#include <QRectF>
#include <optional>
#include <vector>

namespace polefit {

/// What a legend must not cover, in pixels.
struct Obstacles {
  std::vector<std::vector<QPointF>> lines;
  std::vector<QPointF> marks;
  std::vector<QRectF> texts;
};

/// Where a legend of `size` stands inside `room` without covering anything: `present` where that is
/// still free, else the first free of the corners, the middles of the upper and lower edge, and the
/// places at half the height. Nothing where none is free.
std::optional<Qt::Alignment> FreeLegendPlace(const QRectF& room, const QSizeF& size,
                                             const Obstacles& obstacles, Qt::Alignment present);

/// The upper left corner of a text of `size` inside `room` that covers nothing: along the upper or
/// the lower edge, first at its end and its middle, or else along the other one. Nothing where none
/// is free.
std::optional<QPointF> FreeNotePlace(const QRectF& room, const QSizeF& size,
                                     const Obstacles& obstacles, Qt::Edge first);

}  // namespace polefit

#pragma once

#include <QPointF>
#include <QRectF>
#include <vector>

namespace polefit {

/// What of a line lies inside a rectangle. Where it leaves and comes back, or was broken by a NaN
/// before, a point with the ordinate NaN stands between the pieces.
std::vector<QPointF> ClippedLine(const std::vector<QPointF>& line, const QRectF& room);

}  // namespace polefit

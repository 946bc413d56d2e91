#include "plots/ui/clipped_line.h"

#include <QLineF>
#include <algorithm>
#include <limits>
#include <optional>

namespace polefit {

namespace {

/// The part of a piece inside a rectangle, by its parameter along the piece (Y.-D. Liang and
/// B. A. Barsky, ACM Trans. Graphics 3 (1984) 1).
std::optional<QLineF> Cut(const QLineF& piece, const QRectF& room) {
  double from = 0;
  double to = 1;
  // Inside of one edge: way * t <= distance.
  const auto keep = [&](double way, double distance) {
    if (way < 0) from = std::max(from, distance / way);
    if (way > 0) to = std::min(to, distance / way);
    return way == 0 ? distance >= 0 : from <= to;
  };
  const bool isSeen =
      keep(-piece.dx(), piece.x1() - room.left()) && keep(piece.dx(), room.right() - piece.x1()) &&
      keep(-piece.dy(), piece.y1() - room.top()) && keep(piece.dy(), room.bottom() - piece.y1());
  if (!isSeen) return std::nullopt;
  return QLineF(piece.pointAt(from), to == 1 ? piece.p2() : piece.pointAt(to));
}

}  // namespace

std::vector<QPointF> ClippedLine(const std::vector<QPointF>& line, const QRectF& room) {
  std::vector<QPointF> clipped;
  for (std::size_t i = 1; i < line.size(); ++i) {
    const bool isBroken = qIsNaN(line[i - 1].y()) || qIsNaN(line[i].y());
    const auto piece = isBroken ? std::nullopt : Cut({line[i - 1], line[i]}, room);
    if (!piece) continue;
    if (clipped.empty() || clipped.back() != piece->p1()) {
      if (!clipped.empty()) {
        clipped.emplace_back(piece->x1(), std::numeric_limits<double>::quiet_NaN());
      }
      clipped.push_back(piece->p1());
    }
    clipped.push_back(piece->p2());
  }
  return clipped;
}

}  // namespace polefit

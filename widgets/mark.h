#pragma once

class QPainter;
class QRect;

namespace polefit {

/// Draws the line at the bottom of a box or a cell that says that there is a finding: unbroken for
/// a fault, dashed for a warning.
void DrawMark(QPainter& painter, const QRect& box, bool isFault);

}  // namespace polefit

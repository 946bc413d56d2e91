#include "widgets/mark.h"

#include <QPainter>

namespace polefit {

void DrawMark(QPainter& painter, const QRect& box, bool isFault) {
  // Both stand off from a light and from a dark ground by more than 3 : 1.
  const QColor color = isFault ? QColor(0xd9, 0x30, 0x30) : QColor(0xb0, 0x72, 0x00);
  constexpr int kThickness = 2;
  QPen pen(color, kThickness, isFault ? Qt::SolidLine : Qt::DashLine, Qt::FlatCap);
  painter.save();
  painter.setPen(pen);
  const int y = box.bottom() - 1;
  painter.drawLine(box.left() + 2, y, box.right() - 2, y);
  painter.restore();
}

}  // namespace polefit

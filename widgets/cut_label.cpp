#include "widgets/cut_label.h"

#include <QPainter>
#include <QStyle>

namespace polefit {

void DrawCut(QWidget& widget, const QString& text, Qt::Alignment alignment) {
  const int gap = widget.fontMetrics().horizontalAdvance(' ');
  const QRect room = widget.rect().adjusted(gap, 0, -gap, 0);
  const QString cut = widget.fontMetrics().elidedText(text, Qt::ElideRight, room.width());
  QPainter painter(&widget);
  widget.style()->drawItemText(&painter, room, static_cast<int>(alignment | Qt::AlignVCenter),
                               widget.palette(), true, cut, widget.foregroundRole());
}

CutLabel::CutLabel() {
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  setMinimumWidth(1);
}

void CutLabel::paintEvent(QPaintEvent* /*event*/) {
  DrawCut(*this, text(), alignment());
}

}  // namespace polefit

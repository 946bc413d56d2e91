#include "grids/ui/grid_corner.h"

#include <QPainter>
#include <QStyleOptionHeader>

namespace polefit {

void GridCorner::setText(const QString& text) {
  text_ = text;
  update();
}

void GridCorner::paintEvent(QPaintEvent* /*event*/) {
  QStyleOptionHeader option;
  option.initFrom(this);
  option.text = text_;
  option.textAlignment = Qt::AlignCenter;
  option.position = QStyleOptionHeader::OnlyOneSection;
  option.orientation = Qt::Horizontal;
  QPainter painter(this);
  style()->drawControl(QStyle::CE_Header, &option, &painter, this);
}

}  // namespace polefit

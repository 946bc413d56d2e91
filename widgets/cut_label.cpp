#include "widgets/cut_label.h"

#include <QPainter>
#include <QStyle>

namespace polefit {

namespace {

int Gap(const QWidget& widget) {
  return widget.fontMetrics().horizontalAdvance(' ');
}

}  // namespace

int WidthOf(const QWidget& widget, const QString& text) {
  return widget.fontMetrics().horizontalAdvance(text) + 2 * Gap(widget) + 1;
}

QString FittingText(const QWidget& widget, const QStringList& texts) {
  for (const QString& text : texts) {
    if (WidthOf(widget, text) <= widget.width()) return text;
  }
  return texts.isEmpty() ? QString()
                         : widget.fontMetrics().elidedText(texts.last(), Qt::ElideRight,
                                                           widget.width() - 2 * Gap(widget));
}

void DrawFitting(QWidget& widget, const QStringList& texts, Qt::Alignment alignment) {
  const QRect room = widget.rect().adjusted(Gap(widget), 0, -Gap(widget), 0);
  QPainter painter(&widget);
  widget.style()->drawItemText(&painter, room, static_cast<int>(alignment | Qt::AlignVCenter),
                               widget.palette(), true, FittingText(widget, texts),
                               widget.foregroundRole());
}

CutLabel::CutLabel() {
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  setMinimumWidth(1);
}

void CutLabel::SetTexts(const QStringList& texts) {
  shorter_ = texts.mid(1);
  setText(texts.value(0));
  update();
}

void CutLabel::paintEvent(QPaintEvent* /*event*/) {
  DrawFitting(*this, QStringList(text()) + shorter_, alignment());
}

}  // namespace polefit

#include "widgets/program_style.h"

#include <QPainter>
#include <QStyleOption>

namespace polefit {

namespace {

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}

}  // namespace

QColor LineColor(const QPalette& palette) {
  const QColor base = palette.color(QPalette::Base);
  const QColor text = palette.color(QPalette::Text);
  const auto mix = [](int from, int to) { return (3 * from + to) / 4; };
  return {mix(base.red(), text.red()), mix(base.green(), text.green()),
          mix(base.blue(), text.blue())};
}

void ProgramStyle::polish(QPalette& palette) {
  QProxyStyle::polish(palette);
  // Some desktops give a disabled field the ground of one that can be filled in.
  if (palette.color(QPalette::Disabled, QPalette::Base) == palette.color(QPalette::Base)) {
    palette.setColor(QPalette::Disabled, QPalette::Base, palette.color(QPalette::Window));
  }
}

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  const bool square = element == PE_IndicatorCheckBox;
  if ((!square && element != PE_IndicatorRadioButton) || !IsDark(option->palette)) return;
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing, !square);
  painter->setBrush(Qt::NoBrush);
  painter->setPen(LineColor(option->palette).lighter(150));
  const QRect outline = option->rect.adjusted(0, 0, -1, -1);
  if (square) {
    painter->drawRect(outline);
  } else {
    painter->drawEllipse(outline);
  }
  painter->restore();
}

QSize ProgramStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                     const QSize& size, const QWidget* widget) const {
  const QSize whole = QProxyStyle::sizeFromContents(type, option, size, widget);
  if (type != CT_PushButton) return whole;
  const int line = option->fontMetrics.height();
  return whole + QSize(line, line / 3);
}

int ProgramStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* data) const {
  if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
  return QProxyStyle::styleHint(hint, option, widget, data);
}

}  // namespace polefit

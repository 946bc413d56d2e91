#pragma once

#include <QColor>
#include <QPalette>
#include <QProxyStyle>

namespace polefit {

/// A line that can be seen on the palette's base, in light and dark.
QColor LineColor(const QPalette& palette);

/// The desktop's style with an outline round check boxes and option buttons where the palette is
/// dark: the style's own nearly vanishes there.
class OutlinedStyle : public QProxyStyle {
 public:
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

}  // namespace polefit

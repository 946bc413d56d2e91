#pragma once

#include <QColor>
#include <QPalette>
#include <QProxyStyle>

namespace polefit {

/// Whether texts are lighter than what they stand on.
bool IsDark(const QPalette& palette);

/// A line that can be seen on the palette's base, in light and dark.
QColor LineColor(const QPalette& palette);

/// How well two colours stand off from each other: 1 for the same, 21 for black on white.
double ContrastOf(const QColor& a, const QColor& b);

/// The desktop's style, and an outline round check boxes and option buttons where the palette is
/// dark: the style's own nearly vanishes there. Push buttons of every window are alike: with room
/// round their text, and without pictures. Tabs stand close, so that all seven can be seen beside
/// the curves. Row numbers stand on the line of their cells. Fields that are disabled look so on
/// every palette and can be read.
class ProgramStyle : public QProxyStyle {
 public:
  using QProxyStyle::polish;
  void polish(QPalette& palette) override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override;
};

}  // namespace polefit

#include "plots/ui/curve_style.h"

#include <algorithm>

#include "widgets/program_style.h"

namespace polefit {

namespace {

/// Up to half way to the ground, as far as it can still be seen well: a curve that no longer
/// belongs to what is typed.
QColor Pale(const QColor& color, const QPalette& palette) {
  constexpr double kLeastContrast = 3;
  constexpr int kSteps = 20;
  const QColor base = palette.color(QPalette::Base);
  QColor pale = color;
  for (int step = 1; step <= kSteps / 2; ++step) {
    const auto mix = [step](int one, int other) { return one + (other - one) * step / kSteps; };
    const QColor paler(mix(color.red(), base.red()), mix(color.green(), base.green()),
                       mix(color.blue(), base.blue()));
    if (ContrastOf(paler, base) < kLeastContrast) break;
    pale = paler;
  }
  return pale;
}

}  // namespace

QPalette PaperPalette() {
  QPalette palette(Qt::white);
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::Window, Qt::white);
  palette.setColor(QPalette::Text, QColor(0x20, 0x20, 0x20));
  palette.setColor(QPalette::WindowText, QColor(0x20, 0x20, 0x20));
  return palette;
}

// The colours follow M. Okabe and K. Ito, Color Universal Design, 2008; darker on light ground
// where theirs have too little contrast for a thin line.
QColor ColorOf(SeriesRole role, const QPalette& palette) {
  const bool dark = IsDark(palette);
  switch (role) {
    case SeriesRole::typed:
      return dark ? QColor(0x56, 0xb4, 0xe9) : QColor(0x00, 0x62, 0xa8);
    case SeriesRole::result:
    case SeriesRole::resultMarks:
      return dark ? QColor(0xf5, 0xa0, 0x42) : QColor(0xc2, 0x4e, 0x00);
    case SeriesRole::preview:
      return dark ? QColor(0x2f, 0xc7, 0x9a) : QColor(0x00, 0x84, 0x60);
    case SeriesRole::other:
    case SeriesRole::worst:
      return dark ? QColor(0xf0, 0x8c, 0xc0) : QColor(0xb0, 0x2a, 0x78);
    case SeriesRole::another:
      return dark ? QColor(0xf0, 0xe4, 0x42) : QColor(0x7a, 0x5c, 0x00);
    case SeriesRole::notCounted:
    case SeriesRole::input:
    case SeriesRole::plainMagnitude:
    case SeriesRole::constant:
    case SeriesRole::ghostPoles:
    case SeriesRole::ghostZeros:
      return dark ? QColor(0x9a, 0x9a, 0x9a) : QColor(0x74, 0x74, 0x74);
    default:
      return palette.color(QPalette::Text);
  }
}

namespace {

QColor ColorOfSeries(const Series& series, const QPalette& palette) {
  const bool areLocations = series.role == SeriesRole::poles || series.role == SeriesRole::zeros;
  const QColor color = ColorOf(areLocations ? series.curve : series.role, palette);
  return series.isPale ? Pale(color, palette) : color;
}

/// Dots that are seen where the line is steep, too.
QPen ThinDots(const QColor& color) {
  QPen pen(color, 1.4);
  pen.setDashPattern({1.5, 2});
  return pen;
}

}  // namespace

QPen PenOf(const Series& series, const QPalette& palette) {
  const QColor color = ColorOfSeries(series, palette);
  switch (series.role) {
    case SeriesRole::preview:
      return {color, 1.8, Qt::DotLine};
    case SeriesRole::input:
      return ThinDots(color);
    case SeriesRole::other:
    case SeriesRole::plainMagnitude:
      return {color, 1.4, Qt::DashLine};
    case SeriesRole::another:
    case SeriesRole::constant:
      return {color, series.role == SeriesRole::another ? 1.6 : 1.2, Qt::DashDotLine};
    case SeriesRole::result:
      return {color, 2.2};
    default:
      return {color, 1.8};
  }
}

QCPScatterStyle MarkOf(const Series& series, const QPalette& palette, double size) {
  const QColor color = ColorOfSeries(series, palette);
  const QPen pen(color, std::min(1.5, .2 * size));
  switch (series.role) {
    case SeriesRole::poles:
    case SeriesRole::ghostPoles:
      return {QCPScatterStyle::ssCross, QPen(color, 2), Qt::NoBrush, size * 1.3};
    case SeriesRole::zeros:
    case SeriesRole::ghostZeros:
      return {QCPScatterStyle::ssCircle, QPen(color, 2), Qt::NoBrush, size * 1.3};
    case SeriesRole::belowAxis:
      return {QCPScatterStyle::ssTriangleInverted, pen, Qt::NoBrush, size};
    case SeriesRole::sidelobe:
      return {QCPScatterStyle::ssTriangle, pen, Qt::NoBrush, size};
    case SeriesRole::worst:
      return {QCPScatterStyle::ssDisc, pen, QBrush(color), size};
    case SeriesRole::resultMarks:
      return {QCPScatterStyle::ssDisc, pen, QBrush(color), size * .6};
    default:
      return {QCPScatterStyle::ssCircle, pen, Qt::NoBrush, size * .8};
  }
}

}  // namespace polefit

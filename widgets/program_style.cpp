#include "widgets/program_style.h"

#include <QPainter>
#include <QStyleOption>
#include <algorithm>
#include <cmath>

namespace polefit {

namespace {

/// How light a colour is to the eye, 0 to 1.
double Luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}

QColor Mixed(const QColor& from, const QColor& to, double share) {
  const auto mix = [share](int a, int b) { return qRound(a + share * (b - a)); };
  return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

/// Brings the disabled text of a role so near to the enabled one that it can be read.
void MakeReadable(QPalette& palette, QPalette::ColorRole text, QPalette::ColorRole ground) {
  constexpr double kLeastContrast = 3.2;  // 3 is the usual least; the rest is for rounding
  constexpr int kSteps = 20;
  const QColor disabled = palette.color(QPalette::Disabled, text);
  const QColor enabled = palette.color(QPalette::Active, text);
  const QColor behind = palette.color(QPalette::Disabled, ground);
  QColor color = disabled;
  for (int step = 1; step <= kSteps && ContrastOf(color, behind) < kLeastContrast; ++step) {
    color = Mixed(disabled, enabled, static_cast<double>(step) / kSteps);
  }
  palette.setColor(QPalette::Disabled, text, color);
}

/// A theme that says nothing of hints leaves them dark, on a dark ground too.
void MakeHintsReadable(QPalette& palette) {
  constexpr double kLeastContrast = 2.5;  // a hint may be fainter than what is disabled
  const QColor base = palette.color(QPalette::Base);
  const QColor hint = palette.color(QPalette::PlaceholderText);
  if (ContrastOf(Mixed(base, hint, hint.alphaF()), base) >= kLeastContrast) return;
  palette.setColor(QPalette::PlaceholderText, palette.color(QPalette::Disabled, QPalette::Text));
}

}  // namespace

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}

QColor LineColor(const QPalette& palette) {
  const QColor base = palette.color(QPalette::Base);
  const QColor text = palette.color(QPalette::Text);
  return Mixed(base, text, 0.25);
}

double ContrastOf(const QColor& a, const QColor& b) {
  const double first = Luminance(a) + 0.05;
  const double second = Luminance(b) + 0.05;
  return std::max(first, second) / std::min(first, second);
}

void ProgramStyle::polish(QPalette& palette) {
  QProxyStyle::polish(palette);
  // Some desktops give a disabled field the ground of one that can be filled in.
  if (palette.color(QPalette::Disabled, QPalette::Base) == palette.color(QPalette::Base)) {
    palette.setColor(QPalette::Disabled, QPalette::Base, palette.color(QPalette::Window));
  }
  MakeReadable(palette, QPalette::WindowText, QPalette::Window);
  MakeReadable(palette, QPalette::Text, QPalette::Base);
  MakeReadable(palette, QPalette::ButtonText, QPalette::Button);
  MakeHintsReadable(palette);
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

void ProgramStyle::drawControl(ControlElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
  const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
  const bool isRowNumber =
      element == CE_HeaderLabel && header != nullptr && header->orientation == Qt::Vertical;
  if (!isRowNumber) return QProxyStyle::drawControl(element, option, painter, widget);
  // As the text of a cell stands: in the row without the line below it, on whole pixels.
  const int margin = pixelMetric(PM_HeaderMargin, option, widget);
  QStyleOptionHeader label = *header;
  label.rect = alignedRect(header->direction, Qt::AlignCenter,
                           {header->rect.width(), header->fontMetrics.height()},
                           header->rect.adjusted(0, -margin, 0, margin - 1));
  QProxyStyle::drawControl(element, &label, painter, widget);
}

QSize ProgramStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                     const QSize& size, const QWidget* widget) const {
  const QSize whole = QProxyStyle::sizeFromContents(type, option, size, widget);
  if (type != CT_PushButton) return whole;
  const int line = option->fontMetrics.height();
  return whole + QSize(line, line / 3);
}

int ProgramStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                              const QWidget* widget) const {
  const int whole = QProxyStyle::pixelMetric(metric, option, widget);
  return metric == PM_TabBarTabHSpace ? whole / 2 : whole;
}

int ProgramStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* data) const {
  if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
  return QProxyStyle::styleHint(hint, option, widget, data);
}

}  // namespace polefit

#include "widgets/twips.h"

#include <QFontInfo>
#include <QWidget>
#include <algorithm>

namespace polefit {

namespace {

constexpr double kTwipsPerInch = 1440;
constexpr double kDesignPointSize = 10;

double PixelsPerTwip(const QWidget& widget) {
  const double pointSize = QFontInfo(widget.font()).pointSizeF();
  return widget.logicalDpiX() / kTwipsPerInch * std::max(1.0, pointSize / kDesignPointSize);
}

}  // namespace

int TwipsToPixels(const QWidget& widget, int twips) {
  return qRound(twips * PixelsPerTwip(widget));
}

int PixelsToTwips(const QWidget& widget, int pixels) {
  return qRound(pixels / PixelsPerTwip(widget));
}

}  // namespace polefit

#include "widgets/window_size.h"

#include <QScreen>
#include <QWidget>

namespace polefit {

void ResizeOnScreen(QWidget& window, const QSize& wanted) {
  constexpr double kLargestShare = .9;
  window.resize(wanted.boundedTo(window.screen()->availableSize() * kLargestShare));
}

}  // namespace polefit

#pragma once

#include <QSize>

class QWidget;

namespace polefit {

/// Gives a window its first size, or what of it the screen has room for beside its frame.
void ResizeOnScreen(QWidget& window, const QSize& wanted);

}  // namespace polefit

#include "platform/ui/dialog_parent.h"

#include <QApplication>
#include <QMainWindow>

namespace polefit {

QWidget* DialogParent() {
  if (QWidget* const active = QApplication::activeWindow()) return active;
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && qobject_cast<QMainWindow*>(window) != nullptr) return window;
  }
  return nullptr;
}

}  // namespace polefit

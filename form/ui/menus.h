#pragma once

#include <span>

#include "form/history.h"

namespace polefit {

class MainWindow;

/// One entry of a menu; `chosen` goes out when it is chosen. `kind` says what undoing it gives
/// back.
struct MenuEntry {
  const char* name;
  const char* caption;
  const char* shortcut;
  const char* icon;
  void (MainWindow::*chosen)();
  bool isSeparated = false;
  StepKind kind = StepKind::takesForm;
};

struct MenuContents {
  const char* name;
  const char* caption;
  std::span<const MenuEntry> entries;
};

/// The menus of the main form from left to right, their captions still to be translated in the
/// context "MainWindow". The Edit menu stands behind the first one.
std::span<const MenuContents> MainMenus();

}  // namespace polefit

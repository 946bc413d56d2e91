#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QTabWidget>
#include <algorithm>
#include <bit>
#include <cstdint>
#include <set>

#include "program/ui/installed_program.h"

namespace polefit::testing {
namespace {

using MenusTest = InstalledProgram;
using Keys = std::vector<std::string>;

std::string Mnemonic(const QString& caption) {
  return QKeySequence::mnemonic(caption).toString().toStdString();
}

/// Those that stand in the list more than once.
Keys Repeated(Keys keys) {
  std::erase(keys, "");
  std::sort(keys.begin(), keys.end());
  Keys repeated;
  for (std::size_t i = 1; i < keys.size(); ++i) {
    if (keys[i] == keys[i - 1]) repeated.push_back(keys[i]);
  }
  return repeated;
}

/// The mnemonics of a menu's entries, each of which has one.
Keys EntryKeys(const QMenu& menu) {
  Keys keys;
  for (const QAction* entry : menu.actions()) {
    if (entry->isSeparator()) continue;
    keys.push_back(Mnemonic(entry->text()));
    EXPECT_NE(keys.back(), "") << entry->text().toStdString();
  }
  return keys;
}

/// The keys that work in the window as it stands: menus, tabs, shortcuts, and what is seen.
Keys WindowKeys(const QMainWindow& window) {
  Keys keys;
  for (const QAction* menu : window.menuBar()->actions()) keys.push_back(Mnemonic(menu->text()));
  const auto& tabs = *window.findChild<QTabWidget*>();
  for (int tab = 0; tab < tabs.count(); ++tab) keys.push_back(Mnemonic(tabs.tabText(tab)));
  std::set<std::string> keysOfParts;
  for (const QAction* action : window.findChildren<QAction*>()) {
    const std::string key = action->shortcut().toString().toStdString();
    if (action->shortcutContext() != Qt::WidgetShortcut) {
      keys.push_back(key);
      continue;
    }
    keysOfParts.insert(key);
    for (const QObject* part : action->associatedObjects()) {
      const bool isMenu = qobject_cast<const QMenu*>(part) != nullptr;
      if (!isMenu)
        keys.push_back(key + " in " + std::to_string(std::bit_cast<std::uintptr_t>(part)));
    }
  }
  keys.insert(keys.end(), keysOfParts.begin(), keysOfParts.end());
  for (const auto* button : window.findChildren<QAbstractButton*>()) {
    if (button->isVisible()) keys.push_back(button->shortcut().toString().toStdString());
  }
  for (const auto* label : window.findChildren<QLabel*>()) {
    if (label->isVisible() && label->buddy() != nullptr) keys.push_back(Mnemonic(label->text()));
  }
  return keys;
}

TEST_F(MenusTest, NoKeyOfTheWholeProgramStandsForTwoThings) {
  Start(MakeFile("run1.txt"));
  auto& window = dynamic_cast<QMainWindow&>(*The("CVX_Tabs").window());
  for (const char* entry : {"mnuViewCurves", "mnuViewFindings", "mnuViewRun"}) Choose(entry);
  for (const QAction* menu : window.menuBar()->actions()) {
    EXPECT_EQ(Repeated(EntryKeys(*menu->menu())), Keys()) << menu->text().toStdString();
  }
  auto& tabs = The<QTabWidget>("CVX_Tabs");
  for (int tab = 0; tab < tabs.count(); ++tab) {
    tabs.setCurrentIndex(tab);
    const Keys keys = WindowKeys(window);
    for (const char* key : {"Alt+T", "Alt+I", "Alt+7", "Ctrl+I", "Ctrl+G", "Ctrl+Shift+E", "F8"}) {
      EXPECT_EQ(std::count(keys.begin(), keys.end(), key), 1) << key << " on tab " << tab + 1;
    }
    EXPECT_EQ(Repeated(keys), Keys()) << "tab " << tab + 1;
  }
}

}  // namespace
}  // namespace polefit::testing

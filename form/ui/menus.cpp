#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

#include "form/ui/main_window.h"

namespace polefit {

struct MenuEntry {
  const char* name;
  const char* caption;
  const char* shortcut;
  const char* icon;
  void (MainWindow::*chosen)();
  bool separated = false;
};

void MainWindow::BuildMenu(const char* name, const char* caption,
                           std::span<const MenuEntry> entries) {
  QMenu* menu = menuBar()->addMenu(caption);
  menu->setObjectName(name);
  for (const MenuEntry& entry : entries) {
    if (entry.separated) menu->addSeparator();
    QAction* action = menu->addAction(QIcon::fromTheme(entry.icon), entry.caption);
    action->setObjectName(entry.name);
    action->setShortcut(QKeySequence(entry.shortcut));
    connect(action, &QAction::triggered, this, [this, chosen = entry.chosen] { Command(chosen); });
  }
}

void MainWindow::BuildMenus() {
  static constexpr MenuEntry kFile[] = {
      {"mnuFileNew", "&New", "Ctrl+N", "document-new", &MainWindow::mnuFileNew},
      {"mnuFileOpen", "&Open ...", "Ctrl+O", "document-open", &MainWindow::mnuFileOpen},
      {"mnuFileSave", "&Save", "Ctrl+S", "document-save", &MainWindow::mnuFileSave, true},
      {"mnuFileSaveAs", "Save &As ...", "Ctrl+Shift+S", "document-save-as",
       &MainWindow::mnuFileSaveAs},
      {"mnuFileDelete", "&Delete ...", "", "edit-delete", &MainWindow::mnuFileDelete},
      {"mnuFileSubmit", "Submit &Run", "F5", "system-run", &MainWindow::mnuFileSubmit, true},
      {"mnuFileExit", "E&xit", "Ctrl+Q", "application-exit", &MainWindow::Unload, true},
  };
  static constexpr MenuEntry kView[] = {
      {"mnuViewDemos", "&Example File ...", "", "document-preview", &MainWindow::mnuViewDemos},
      {"mnuViewOutput", "&Last Output ...", "Ctrl+L", "text-x-generic", &MainWindow::mnuViewOutput},
  };
  static constexpr MenuEntry kDemos[] = {
      {"mnuDemosRun", "&Run Demo", "", "media-playback-start", &MainWindow::mnuDemosRun},
  };
  static constexpr MenuEntry kHelp[] = {
      {"mnuHelpManual", "&Manual", "F1", "help-contents", &MainWindow::mnuHelpManual},
      {"mnuHelpEmail", "&E-mail Support", "", "mail-message-new", &MainWindow::mnuHelpEmail},
      {"mnuHelpAbout", "&About ...", "", "help-about", &MainWindow::mnuHelpAbout, true},
  };
  BuildMenu("mnuFile", "&File", kFile);
  BuildMenu("mnuView", "&View", kView);
  BuildMenu("mnuDemos", "&Demos", kDemos);
  BuildMenu("mnuHelp", "&Help", kHelp);
}

}  // namespace polefit

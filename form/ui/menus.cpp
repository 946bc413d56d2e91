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
  void (FrmMain::*chosen)();
  bool separated = false;
};

void FrmMain::BuildMenu(const char* name, const char* caption, std::span<const MenuEntry> entries) {
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

void FrmMain::BuildMenus() {
  static constexpr MenuEntry kFile[] = {
      {"mnuFileNew", "&New", "Ctrl+N", "document-new", &FrmMain::mnuFileNew},
      {"mnuFileOpen", "&Open ...", "Ctrl+O", "document-open", &FrmMain::mnuFileOpen},
      {"mnuFileSave", "&Save", "Ctrl+S", "document-save", &FrmMain::mnuFileSave, true},
      {"mnuFileSaveAs", "Save &As ...", "Ctrl+Shift+S", "document-save-as",
       &FrmMain::mnuFileSaveAs},
      {"mnuFileDelete", "&Delete ...", "", "edit-delete", &FrmMain::mnuFileDelete},
      {"mnuFileSubmit", "Submit &Run", "F5", "system-run", &FrmMain::mnuFileSubmit, true},
      {"mnuFileExit", "E&xit", "Ctrl+Q", "application-exit", &FrmMain::Unload, true},
  };
  static constexpr MenuEntry kView[] = {
      {"mnuViewDemos", "&Example File ...", "", "document-preview", &FrmMain::mnuViewDemos},
      {"mnuViewOutput", "&Last Output ...", "Ctrl+L", "text-x-generic", &FrmMain::mnuViewOutput},
  };
  static constexpr MenuEntry kDemos[] = {
      {"mnuDemosRun", "&Run Demo", "", "media-playback-start", &FrmMain::mnuDemosRun},
  };
  static constexpr MenuEntry kHelp[] = {
      {"mnuHelpManual", "&Manual", "F1", "help-contents", &FrmMain::mnuHelpManual},
      {"mnuHelpEmail", "&E-mail Support", "", "mail-message-new", &FrmMain::mnuHelpEmail},
      {"mnuHelpAbout", "&About ...", "", "help-about", &FrmMain::mnuHelpAbout, true},
  };
  BuildMenu("mnuFile", "&File", kFile);
  BuildMenu("mnuView", "&View", kView);
  BuildMenu("mnuDemos", "&Demos", kDemos);
  BuildMenu("mnuHelp", "&Help", kHelp);
}

}  // namespace polefit

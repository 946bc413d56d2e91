#include "form/ui/menus.h"

#include "form/ui/main_window.h"

namespace polefit {

std::span<const MenuContents> MainMenus() {
  static constexpr MenuEntry kFile[] = {
      {"mnuFileNew", QT_TRANSLATE_NOOP("MainWindow", "&New"), "Ctrl+N", "document-new",
       &MainWindow::mnuFileNew, false, StepKind::replacesDocument},
      {"mnuFileOpen", QT_TRANSLATE_NOOP("MainWindow", "&Open ..."), "Ctrl+O", "document-open",
       &MainWindow::mnuFileOpen, false, StepKind::replacesDocument},
      {"mnuFileSave", QT_TRANSLATE_NOOP("MainWindow", "&Save"), "Ctrl+S", "document-save",
       &MainWindow::mnuFileSave, true},
      {"mnuFileSaveAs", QT_TRANSLATE_NOOP("MainWindow", "Save &As ..."), "Ctrl+Shift+S",
       "document-save-as", &MainWindow::mnuFileSaveAs},
      {"mnuFileDelete", QT_TRANSLATE_NOOP("MainWindow", "&Delete ..."), "", "edit-delete",
       &MainWindow::mnuFileDelete},
      {"mnuFileVersions", QT_TRANSLATE_NOOP("MainWindow", "Former &Versions ..."), "",
       "document-revert", &MainWindow::mnuFileVersions, false, StepKind::replacesDocument},
      {"mnuFileImport", QT_TRANSLATE_NOOP("MainWindow", "&Import Points ..."), "Ctrl+I",
       "document-import", &MainWindow::mnuFileImport, true, StepKind::replacesDocument},
      {"mnuFileExport", QT_TRANSLATE_NOOP("MainWindow", "&Export Result ..."), "Ctrl+Shift+E",
       "document-export", &MainWindow::mnuFileExport},
      {"mnuFileSubmit", QT_TRANSLATE_NOOP("MainWindow", "Submit &Run"), "F5", "system-run",
       &MainWindow::mnuFileSubmit, true},
      {"mnuFileExit", QT_TRANSLATE_NOOP("MainWindow", "E&xit"), "Ctrl+Q", "application-exit",
       &MainWindow::Unload, true},
  };
  static constexpr MenuEntry kView[] = {
      {"mnuViewDemos", QT_TRANSLATE_NOOP("MainWindow", "&Example File ..."), "", "document-preview",
       &MainWindow::mnuViewDemos},
      {"mnuViewOutput", QT_TRANSLATE_NOOP("MainWindow", "&Last Output ..."), "Ctrl+L",
       "text-x-generic", &MainWindow::mnuViewOutput},
  };
  static constexpr MenuEntry kDemos[] = {
      {"mnuDemosRun", QT_TRANSLATE_NOOP("MainWindow", "&Run Demo"), "", "media-playback-start",
       &MainWindow::mnuDemosRun},
      {"mnuDemosRestore", QT_TRANSLATE_NOOP("MainWindow", "Restore &Examples ..."), "",
       "document-revert", &MainWindow::mnuDemosRestore},
  };
  static constexpr MenuEntry kHelp[] = {
      {"mnuHelpManual", QT_TRANSLATE_NOOP("MainWindow", "&Manual"), "", "help-contents",
       &MainWindow::mnuHelpManual},
      {"mnuHelpEmail", QT_TRANSLATE_NOOP("MainWindow", "&E-mail Support"), "", "mail-message-new",
       &MainWindow::mnuHelpEmail},
      {"mnuHelpPage", QT_TRANSLATE_NOOP("MainWindow", "This &Page"), "F1", "help-contextual",
       &MainWindow::mnuHelpPage, true},
      {"mnuHelpAbout", QT_TRANSLATE_NOOP("MainWindow", "&About ..."), "", "help-about",
       &MainWindow::mnuHelpAbout, true},
  };
  static constexpr MenuContents kMenus[] = {
      {"mnuFile", QT_TRANSLATE_NOOP("MainWindow", "&File"), kFile},
      {"mnuView", QT_TRANSLATE_NOOP("MainWindow", "&View"), kView},
      {"mnuDemos", QT_TRANSLATE_NOOP("MainWindow", "&Demos"), kDemos},
      {"mnuHelp", QT_TRANSLATE_NOOP("MainWindow", "&Help"), kHelp},
  };
  return kMenus;
}

}  // namespace polefit

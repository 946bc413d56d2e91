#pragma once

#include <memory>
#include <optional>
#include <string>

#include "app/current_file.h"
#include "app/file_commands.h"
#include "app/import_points.h"
#include "app/ui/help_keys.h"
#include "check/ui/findings_panel.h"
#include "demos/ui/demo_dialog.h"
#include "demos/ui/intro_dialog.h"
#include "form/state.h"
#include "form/ui/main_window.h"
#include "platform/ui/file_watch.h"
#include "plots/ui/curves_dock.h"
#include "program/ui/event_guard.h"
#include "program/ui/program_host.h"
#include "program/ui/recovery_timer.h"
#include "program/ui/run_commands.h"

namespace polefit {

/// All windows of the program, wired to its routines.
class Session {
 public:
  /// `fileToOpen` is a whole path that is opened once the main form is up, or empty.
  Session(ProgramHost& host, std::string fileToOpen);

  /// Shows the introduction on a first start, else the main form.
  void Start();
  /// Ends the program as its own way out does.
  void End();
  bool HasEnded() const { return guard_.HasEnded(); }

  Program& Values() { return program_; }

 private:
  using Routine = void (*)(Program&);

  void ConnectMainForm();
  void ConnectDialogs();
  void ShowFindings();
  void FollowFile();
  void On(void (MainWindow::*signal)(), Routine routine);
  void ShowMainForm();
  void LoadMainFormOnce();
  void ShowDemos();
  void PutFileBack();
  void Submit();
  bool MayStart();
  void TakeImproved();
  void ShowVersions();
  AskForPlan Asker();
  PointsImport Importer();
  void ImportDropped(const std::vector<std::string>& paths);
  void Replace(const QString& name, const std::function<void()>& action);
  void AddRecentMenu();
  void TakeDropped(const QStringList& dropped);
  void ExportResult();

  EventGuard guard_;
  RunWatch& runs_;
  MainWindow frmMain_;
  Program program_;
  RecoveryTimer recovery_;
  std::unique_ptr<HeldLock> programFolder_;
  FindingsPanel findings_{frmMain_};
  CurrentFile currentFile_{program_};
  FileWatch fileWatch_;
  CurvesDock* curves_ = nullptr;  ///< the main window's
  std::optional<RunCommands> run_;
  IntroDialog frmIntro_;
  DemoDialog frmDemo_;
  HelpKeys help_;
  std::string fileToOpen_;
  /// What the form's data belong to while the demo dialog is in the main form's place.
  std::optional<Files> beforeDemos_;
  bool loaded_ = false;
};

}  // namespace polefit

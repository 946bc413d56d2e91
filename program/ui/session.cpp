#include "program/ui/session.h"

#include <QAction>
#include <QMenu>
#include <QTabWidget>
#include <utility>

#include "app/file_commands.h"
#include "app/form_load.h"
#include "app/second_window.h"
#include "app/start_up.h"
#include "app/submission.h"
#include "app/ui/about_box.h"
#include "app/ui/recent_menu.h"
#include "app/ui/versions_command.h"
#include "app/viewers.h"
#include "check/form_findings.h"
#include "demos/demo_runner.h"
#include "demos/introduction.h"
#include "demos/restore_examples.h"
#include "exchange/ui/export_command.h"
#include "exchange/ui/fill_dialog.h"
#include "exchange/ui/import_dialog.h"
#include "form/transfer.h"
#include "form/ui/edit_menu.h"
#include "grids/cell_editor.h"
#include "plots/ui/curves_menu.h"
#include "widgets/controls.h"
#include "widgets/file_drop.h"

namespace polefit {

namespace {

/// What an error leaves when it ends the showing of a file.
QString ShownInPart() {
  return QObject::tr("The form shows what could be read.");
}

}  // namespace

Session::Session(ProgramHost& host, std::string fileToOpen)
    : guard_(host),
      runs_(host.Runs()),
      frmMain_([this](const std::function<void()>& action) { guard_.Run(action); }),
      program_{host, frmMain_},
      recovery_(program_, frmMain_),
      fileToOpen_(std::move(fileToOpen)) {
  guard_.atRisk = [this] { recovery_.KeepNow(); };
  frmMain_.Attach(program_);
  curves_ = new CurvesDock(frmMain_, program_);
  AddCurvesMenu(frmMain_, *curves_);
  run_.emplace(host, program_, frmMain_, *curves_,
               [this](const std::function<void()>& action) { guard_.Run(action); });
  run_->takeImproved = [this] { TakeImproved(); };
  run_->formChanged = [this] { recovery_.FollowCommand(); };
  AddFillEntry(frmMain_, program_);
  ConnectMainForm();
  ConnectDialogs();
}

void Session::On(void (MainWindow::*signal)(), Routine routine) {
  QObject::connect(&frmMain_, signal, &frmMain_, [this, routine] {
    guard_.Run([&] { routine(program_); });
    recovery_.FollowCommand();
  });
}

void Session::ConnectMainForm() {
  On(&MainWindow::mnuFileNew, FileNew);
  QObject::connect(&frmMain_, &MainWindow::mnuFileOpen, &frmMain_,
                   [this] { guard_.Run([this] { OpenChosenFile(program_, Importer()); }); });
  QObject::connect(&frmMain_, &MainWindow::mnuFileImport, &frmMain_,
                   [this] { guard_.Run([this] { ImportChosenFile(program_, Asker()); }); });
  frmMain_.findChild<EditMenu*>()->takeOther = [this](const std::string& text, Table table) {
    return ImportText(program_, text, table == Table::delay, Asker());
  };
  new FileDrop(frmMain_, [this](const QStringList& paths) { TakeDropped(paths); });
  AddRecentMenu();
  On(&MainWindow::mnuFileSave, FileSave);
  On(&MainWindow::mnuFileSaveAs, [](Program& program) { FileSaveAs(program); });
  On(&MainWindow::mnuFileDelete, FileDelete);
  QObject::connect(&frmMain_, &MainWindow::mnuFileVersions, &frmMain_, [this] { ShowVersions(); });
  QObject::connect(&frmMain_, &MainWindow::mnuFileExport, &frmMain_, [this] { ExportResult(); });
  QObject::connect(&frmMain_, &MainWindow::mnuDemosRestore, &frmMain_, [this] {
    Replace(QObject::tr("Restore Examples"), [this] { RestoreExamples(program_); });
  });
  On(&MainWindow::mnuViewDemos, ViewExampleFile);
  On(&MainWindow::mnuViewOutput, ViewLastOutput);
  On(&MainWindow::mnuHelpManual, OpenManual);
  On(&MainWindow::mnuHelpEmail, EmailSupport);
  QObject::connect(&frmMain_, &MainWindow::mnuHelpPage, &frmMain_,
                   [this] { help_.ShowHelpFor(frmMain_); });
  On(&MainWindow::unloaded, EndProgram);
  QObject::connect(&frmMain_, &MainWindow::settled, &frmMain_, [this] { ShowFindings(); });
  QObject::connect(&frmMain_, &MainWindow::settled, &frmMain_, [this] { FollowFile(); });
  QObject::connect(&fileWatch_, &FileWatch::changed, &frmMain_,
                   [this] { guard_.Run([this] { currentFile_.Look(); }); });
  const auto submit = [this] { Submit(); };
  QObject::connect(&frmMain_, &MainWindow::mnuFileSubmit, &frmMain_, submit);
  QObject::connect(&frmMain_, &MainWindow::cmdSubmit, &frmMain_, submit);
  QObject::connect(&frmMain_, &MainWindow::mnuDemosRun, &frmMain_, [this] { ShowDemos(); });
  QObject::connect(&frmMain_, &MainWindow::mnuHelpAbout, &frmMain_,
                   [this] { ShowAboutBox(&frmMain_); });
}

void Session::ShowFindings() {
  if (!loaded_) return;
  guard_.Run([this] {
    try {
      findings_.ShowFindings(FindingsOf(program_), program_.document.isSubmitted);
      run_->FollowForm();
    } catch (const RunTimeError&) {
      // More rows than can be saved: the save says so.
    }
  });
}

void Session::FollowFile() {
  if (!loaded_) return;
  guard_.Run([this] { fileWatch_.Watch(ToQString(currentFile_.Follow())); });
}

void Session::ConnectDialogs() {
  QObject::connect(&frmIntro_, &IntroDialog::cmdRunIntro, &frmIntro_, [this] {
    frmIntro_.hide();
    guard_.Run([this] {
      Start_Path(program_);
      frmDemo_.show();
    });
  });
  QObject::connect(&frmIntro_, &IntroDialog::cmdCreateIntro, &frmIntro_,
                   [this] { ShowMainForm(); });
  QObject::connect(&frmIntro_, &IntroDialog::cmdExitIntro, &frmIntro_,
                   [this] { guard_.Run([this] { EndProgram(program_); }); });
  QObject::connect(&frmDemo_, &DemoDialog::examChosen, &frmDemo_, [this](int index) {
    guard_.Run([&] { ChooseDemo(program_, index); });
    frmDemo_.ShowWhatRuns(ToQString(WhatRuns(program_, true)));
  });
  QObject::connect(&frmDemo_, &DemoDialog::shown, &frmDemo_,
                   [this] { frmDemo_.ShowWhatRuns(ToQString(WhatRuns(program_, false))); });
  QObject::connect(&frmDemo_, &DemoDialog::cmdRunDemo, &frmDemo_, [this] {
    guard_.Run([this] {
      if (!MayStart()) return;
      RunDemo(program_);
      run_->ShowRun(true);
    });
  });
  QObject::connect(&frmDemo_, &DemoDialog::cmdCancelDemo, &frmDemo_, [this] {
    PutFileBack();
    ShowMainForm();
  });
  QObject::connect(curves_, &CurvesDock::improvedValuesWanted, curves_, [this] { TakeImproved(); });
}

void Session::Start() {
  guard_.Run([this] {
    if (WantsIntroduction(program_)) {
      frmIntro_.show();
    } else {
      ShowMainForm();
    }
  });
}

void Session::LoadMainFormOnce() {
  if (std::exchange(loaded_, true)) return;
  guard_.Run([this] { LoadMainForm(program_); }, ShownInPart());
  frmMain_.ForgetSteps();
  if (HasEnded()) return;
  recovery_.Start();
  run_->KeepFormerRun();
  programFolder_ = ClaimProgramFolder(program_);
  guard_.Run([this] { OfferRecovered(program_, [this] { ShowVersions(); }); });
}

AskForPlan Session::Asker() {
  return [this](ImportPlan& plan, const FormCells& form, const ImportFiles& files) {
    ImportDialog dialog(plan, form, files, &frmMain_);
    if (dialog.exec() != QDialog::Accepted) return false;
    plan = dialog.Plan();
    return true;
  };
}

/// What Open does with a file that is none of ours but holds points.
PointsImport Session::Importer() {
  return [this](const std::string& path) { ImportPoints(program_, {path}, Asker()); };
}

/// Lets `action` replace what the form shows, as one step.
void Session::Replace(const QString& name, const std::function<void()>& action) {
  guard_.Run([&] {
    HideCellEditor(program_.windows.grids, false);
    frmMain_.RecordStep(QObject::tr("Typing"));
    action();
  });
  if (HasEnded()) return;
  frmMain_.RecordStep(name, StepKind::replacesDocument);
  frmMain_.ShowState();
  recovery_.FollowCommand();
}

void Session::AddRecentMenu() {
  auto* file = frmMain_.findChild<QMenu*>("mnuFile");
  auto* recent = new RecentMenu(program_.host, file);
  const qsizetype open = file->actions().indexOf(frmMain_.findChild<QAction*>("mnuFileOpen"));
  file->insertMenu(file->actions().value(open + 1), recent);
  QObject::connect(recent, &RecentMenu::chosen, recent, [this](const QString& path) {
    Replace(QObject::tr("Open Recent"),
            [&] { OpenInsteadOfForm(program_, path.toStdString(), Importer()); });
  });
}

/// Points come in, on the tab of the delay data those alone, where the file has a delay.
void Session::ImportDropped(const std::vector<std::string>& paths) {
  const auto tab = static_cast<Tab>(frmMain_.findChild<QTabWidget*>()->currentIndex());
  const bool isForDelays = tab == Tab::delayData && paths.size() == 1;
  if (isForDelays && ImportDelay(program_, paths.front(), Asker())) return;
  ImportPoints(program_, paths, Asker());
}

/// One Response Input File is opened; points, and a second file with their delay, come in.
void Session::TakeDropped(const QStringList& dropped) {
  Replace(QObject::tr("Drop"), [&] {
    std::vector<std::string> paths;
    for (const QString& path : dropped) paths.push_back(path.toStdString());
    if (HoldsOnlyPoints(program_.host, paths.front())) {
      ImportDropped(paths);
    } else {
      OpenInsteadOfForm(program_, paths.front(), Importer());
    }
  });
}

void Session::ShowMainForm() {
  const bool first = !loaded_;
  frmIntro_.hide();
  frmDemo_.hide();
  LoadMainFormOnce();
  if (HasEnded()) return;
  frmMain_.ShowState();
  frmMain_.show();
  frmMain_.activateWindow();
  frmMain_.SetFocus(BoxName(slot::kEqualDelay));
  if (first && runs_.Find(PlacesOf(program_))) {
    run_->ShowRun();
    run_->Open();
  }
  // What is asked about a file comes up over the form that it goes into.
  const std::string file = std::exchange(fileToOpen_, {});
  if (file.empty()) return;
  Replace(QObject::tr("Open"), [&] { OpenNamedFile(program_, file, Importer()); });
}

void Session::ShowDemos() {
  guard_.Run([this] {
    if (!MayShowDemos(program_)) return;
    beforeDemos_ = program_.files;
    frmMain_.hide();
    frmDemo_.show();
  });
}

/// An example chosen in the dialog must not be the file that Save writes the form's data into.
void Session::PutFileBack() {
  if (beforeDemos_) program_.files = *std::exchange(beforeDemos_, std::nullopt);
}

bool Session::MayStart() {
  if (MayStartRun(program_.host, PlacesOf(program_))) return true;
  runs_.Find(PlacesOf(program_));
  run_->ShowRun();
  run_->Open();
  return false;
}

void Session::Submit() {
  guard_.Run([this] {
    if (!MayStart()) return;
    program_.document.RunMode = "*";
    SubmitRun(program_);
    run_->ShowRun();
  });
  recovery_.FollowCommand();
}

void Session::End() {
  guard_.Run([this] { EndProgram(program_); });
}

void Session::ShowVersions() {
  guard_.Run([this] { ChooseFormerVersion(program_, &frmMain_); });
  recovery_.FollowCommand();
}

void Session::ExportResult() {
  const ErrorGuard guard = [this](const std::function<void()>& action) { guard_.Run(action); };
  guard_.Run([&] { ExportLastResult(program_, guard, &frmMain_); });
}

void Session::TakeImproved() {
  PutFileBack();
  if (loaded_) {
    Replace(QObject::tr("Take Improved Values"), [this] { TakeImprovedValues(program_); });
    if (HasEnded()) return;
  }
  ShowMainForm();
}

}  // namespace polefit

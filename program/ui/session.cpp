#include "program/ui/session.h"

#include <utility>

#include "app/file_commands.h"
#include "app/form_load.h"
#include "app/start_up.h"
#include "app/submission.h"
#include "app/ui/about_box.h"
#include "app/viewers.h"
#include "demos/demo_runner.h"
#include "demos/introduction.h"

namespace polefit {

Session::Session(QtHost& host, std::string fileToOpen)
    : guard_(host),
      frmMain_([this](const std::function<void()>& action) { guard_.Run(action); }),
      program_{host, frmMain_},
      fileToOpen_(std::move(fileToOpen)) {
  host.SetSolverStart([this](const Command& command) { return console_.Start(command); });
  frmMain_.Attach(program_);
  ConnectMainForm();
  ConnectDialogs();
}

void Session::On(void (FrmMain::*signal)(), Routine routine) {
  QObject::connect(&frmMain_, signal, &frmMain_,
                   [this, routine] { guard_.Run([&] { routine(program_); }); });
}

void Session::ConnectMainForm() {
  On(&FrmMain::mnuFileNew, FileNew);
  On(&FrmMain::mnuFileOpen, FileOld);
  On(&FrmMain::mnuFileSave, FileSave);
  On(&FrmMain::mnuFileSaveAs, [](Program& program) { FileSaveAs(program); });
  On(&FrmMain::mnuFileDelete, FileDelete);
  On(&FrmMain::mnuViewDemos, ViewExampleFile);
  On(&FrmMain::mnuViewOutput, ViewLastOutput);
  On(&FrmMain::mnuHelpManual, OpenManual);
  On(&FrmMain::mnuHelpEmail, EmailSupport);
  On(&FrmMain::unloaded, EndProgram);
  const auto submit = [this] { Submit(); };
  QObject::connect(&frmMain_, &FrmMain::mnuFileSubmit, &frmMain_, submit);
  QObject::connect(&frmMain_, &FrmMain::cmdSubmit, &frmMain_, submit);
  QObject::connect(&frmMain_, &FrmMain::mnuDemosRun, &frmMain_, [this] { ShowDemos(); });
  QObject::connect(&frmMain_, &FrmMain::mnuHelpAbout, &frmMain_,
                   [this] { ShowAboutBox(&frmMain_); });
}

void Session::ConnectDialogs() {
  QObject::connect(&frmIntro_, &FrmIntro::cmdRunIntro, &frmIntro_, [this] {
    frmIntro_.hide();
    guard_.Run([this] {
      Start_Path(program_);
      frmDemo_.show();
    });
  });
  QObject::connect(&frmIntro_, &FrmIntro::cmdCreateIntro, &frmIntro_, [this] { ShowMainForm(); });
  QObject::connect(&frmIntro_, &FrmIntro::cmdExitIntro, &frmIntro_,
                   [this] { guard_.Run([this] { EndProgram(program_); }); });
  QObject::connect(&frmDemo_, &FrmDemo::examChosen, &frmDemo_,
                   [this](int index) { guard_.Run([&] { ChooseDemo(program_, index); }); });
  QObject::connect(&frmDemo_, &FrmDemo::cmdRunDemo, &frmDemo_, [this] {
    guard_.Run([this] {
      if (MayStart()) RunDemo(program_);
    });
  });
  QObject::connect(&frmDemo_, &FrmDemo::cmdCancelDemo, &frmDemo_, [this] {
    PutFileBack();
    ShowMainForm();
  });
  QObject::connect(&console_, &RunConsole::reportWanted, &console_,
                   [this] { guard_.Run([this] { ViewLastOutput(program_); }); });
  QObject::connect(&console_, &RunConsole::improvedValuesWanted, &console_,
                   [this] { TakeImproved(); });
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
  guard_.Run([this] { LoadMainForm(program_); });
  if (HasEnded() || fileToOpen_.empty()) return;
  guard_.Run([this] { OpenNamedFile(program_, fileToOpen_); });
}

void Session::ShowMainForm() {
  const bool first = !loaded_;
  LoadMainFormOnce();
  if (HasEnded()) return;
  frmIntro_.hide();
  frmDemo_.hide();
  frmMain_.ShowState();
  frmMain_.show();
  frmMain_.activateWindow();
  frmMain_.SetFocus("chkEqualDelay");
  if (first) console_.Find(program_.ProgramFolder);
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
  if (MayStartRun(program_)) return true;
  console_.Find(program_.ProgramFolder);
  console_.ShowInFront();
  return false;
}

void Session::Submit() {
  guard_.Run([this] {
    if (!MayStart()) return;
    program_.RunMode = "*";
    SubmitRun(program_);
  });
}

void Session::TakeImproved() {
  PutFileBack();
  if (loaded_) {
    guard_.Run([this] { TakeImprovedValues(program_); });
    if (HasEnded()) return;
  }
  ShowMainForm();
}

}  // namespace polefit

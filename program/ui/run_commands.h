#pragma once

#include <QPointer>
#include <functional>
#include <optional>
#include <vector>

#include "app/ui/report_viewer.h"
#include "form/state.h"
#include "program/ui/program_host.h"
#include "runs/ui/run_panel.h"
#include "runs/ui/runs_pane.h"

namespace polefit {

class CurvesDock;
class MainWindow;

/// The run that is on or was last, and those before it: carries out what the run panel and the
/// table of runs ask for.
class RunCommands {
 public:
  using Guard = std::function<void(const std::function<void()>&)>;

  RunCommands(ProgramHost& host, Program& program, MainWindow& form, CurvesDock& curves,
              Guard guard);
  ~RunCommands();

  /// Called when the improved values of the last run are to be taken.
  std::function<void()> takeImproved;
  /// Called when a command has changed the form.
  std::function<void()> formChanged;

  /// Takes up the last run of before this start: its curve, and its place in the history if no
  /// window was open at its end.
  void KeepFormerRun();
  /// Shows the run that is on, if any.
  void ShowRun(bool isDemo = false);
  void Open() { panel_.Open(); }
  /// Says where the results are older than the form.
  void FollowForm();

 private:
  struct OpenReport {
    QPointer<ReportViewer> viewer;
    std::optional<ResponseRecord> given;
  };

  void ConnectPanel();
  void ConnectTable();
  /// There is something to export once a run has left a result.
  void AllowExport();
  void TakeEnd(bool hasValues);
  void ShowResult();
  void ShowLastReport();
  /// `given` is what its run was given, where that is known.
  void ShowReport(const ReportViewer::Report& report, const std::optional<ResponseRecord>& given);
  void ShowRuns();
  void Do(RunAction action, const std::vector<KeptRun>& runs);
  void ShowKeptReport(const KeptRun& run);
  void Compare(const KeptRun& one, const KeptRun& other);
  void TakeOnForm(const KeptRun& run, bool isInput);
  void EditNote(const KeptRun& run);
  void Delete(const std::vector<KeptRun>& runs);
  void DrawTicked(const std::vector<KeptRun>& runs);
  void Copy(const ExportFormatName& format, const std::string& values, const std::string& file);
  /// Whether the form asks for something else by now.
  bool IsOutdated(const std::optional<ResponseRecord>& given) const;

  ProgramHost& host_;
  Program& program_;
  MainWindow& form_;
  CurvesDock& curves_;
  Guard guard_;
  RunPanel panel_;
  RunsPane& table_;
  /// What the run that is shown was given; nothing when that cannot be read.
  std::optional<ResponseRecord> given_;
  std::vector<OpenReport> reports_;
};

}  // namespace polefit

#include "program/ui/run_commands.h"

#include <QAction>
#include <QClipboard>
#include <QDateTime>
#include <QGuiApplication>
#include <QInputDialog>
#include <QLayout>
#include <QLocale>
#include <QMenu>
#include <utility>

#include "app/file_commands.h"
#include "app/form_replacement.h"
#include "app/ui/report_viewer.h"
#include "check/check.h"
#include "exchange/ui/copy_as.h"
#include "form/transfer.h"
#include "form/ui/main_window.h"
#include "grids/cell_editor.h"
#include "platform/file_checks.h"
#include "platform/file_choice.h"
#include "plots/ui/curves_dock.h"
#include "record/same_problem.h"
#include "responsefile/reader.h"
#include "runs/compare_runs.h"
#include "runs/ui/compare_dialog.h"

namespace polefit {

namespace {

/// The place on tab 7, which has the table of runs from here on, also for the Tab key.
RunsPane& PutTable(MainWindow& form) {
  auto* pane = new RunsPane;
  form.findChild<QWidget*>("runsPlace")->layout()->addWidget(pane);
  auto* before = form.findChild<QWidget*>("cmdSubmit");
  for (QWidget* const part : pane->TabOrder()) {
    QWidget::setTabOrder(before, part);
    before = part;
  }
  return *pane;
}

/// When something was, as short as it is clear: "14:05", of another day "3 Nov 14:05".
QString ClockText(std::int64_t milliseconds) {
  const auto time = QDateTime::fromMSecsSinceEpoch(milliseconds);
  const bool isOfToday = time.date() == QDate::currentDate();
  return QLocale::c().toString(time, isOfToday ? "HH:mm" : "d MMM HH:mm");
}

/// What a run was given, where that was a whole file.
std::optional<ResponseRecord> GivenIn(const RunContents& contents) {
  try {
    return ReadResponseBytes(contents.input);
  } catch (const RunTimeError&) {
    return std::nullopt;
  }
}

QString TitleOf(const char* letter, const KeptRun& run) {
  return QString("%1: %2, %3 %4")
      .arg(letter, QString::fromStdString(run.file),
           QDateTime::fromMSecsSinceEpoch(run.started).toString("yyyy-MM-dd HH:mm:ss"),
           QString::fromStdString(run.note));
}

/// Asks where, and writes the report there.
void SaveCopy(Host& host, const ReportViewer::Report& report) {
  CommonDialog dialog;
  dialog.title = "Save a Copy of the Report";
  dialog.filter = "Text Files (*.txt)|*.txt|All Files (*.*)|*.*";
  dialog.fileName = report.file + ".out.txt";
  const std::string path = ChooseOtherFile(host, std::move(dialog), &Host::ShowSave);
  if (!path.empty()) host.ReplaceFile(path, report.bytes);
}

}  // namespace

RunCommands::RunCommands(ProgramHost& host, Program& program, MainWindow& form, CurvesDock& curves,
                         Guard guard)
    : host_(host),
      program_(program),
      form_(form),
      curves_(curves),
      guard_(std::move(guard)),
      panel_(form, host.Runs()),
      table_(PutTable(form)) {
  host_.History().onFailure = [this](const RunTimeError& error) {
    program_.notices.Post({"runs", Urgency::worthKnowing,
                           "Runs cannot be kept in the history: " + error.description + "."});
  };
  ConnectPanel();
  ConnectTable();
}

/// What an open report saves goes through this.
RunCommands::~RunCommands() {
  for (const OpenReport& report : reports_) delete report.viewer;
}

void RunCommands::ConnectPanel() {
  QObject::connect(&panel_, &RunPanel::reportWanted, &panel_,
                   [this] { guard_([this] { ShowLastReport(); }); });
  QObject::connect(&panel_, &RunPanel::improvedValuesWanted, &panel_, [this] { takeImproved(); });
  QObject::connect(&panel_, &RunPanel::runEnded, &panel_,
                   [this](bool hasValues) { TakeEnd(hasValues); });
  QObject::connect(&panel_, &RunPanel::copyAsWanted, &panel_,
                   [this](const ExportFormatName& format) {
                     guard_([&] {
                       Copy(format, host_.ReadFile(PlacesOf(program_).LastRun()),
                            host_.Runs().Run()->DataFile());
                     });
                   });
}

void RunCommands::ConnectTable() {
  QObject::connect(form_.findChild<QMenu*>("mnuFile"), &QMenu::aboutToShow, &panel_,
                   [this] { AllowExport(); });
  QObject::connect(&table_, &RunsPane::seen, &table_, [this] { ShowRuns(); });
  QObject::connect(&table_, &RunsPane::wanted, &table_,
                   [this](RunAction action, const std::vector<KeptRun>& runs) {
                     guard_([&] { Do(action, runs); });
                   });
  QObject::connect(
      &table_, &RunsPane::copyAsWanted, &table_,
      [this](const ExportFormatName& format, const KeptRun& run) {
        guard_([&] { Copy(format, host_.History().ContentsOf(run).values, run.file); });
      });
  QObject::connect(&table_, &RunsPane::ticked, &table_,
                   [this](const std::vector<KeptRun>& runs) { guard_([&] { DrawTicked(runs); }); });
}

void RunCommands::KeepFormerRun() {
  host_.History().KeepLast(PlacesOf(program_));
  ShowResult();
  AllowExport();
}

void RunCommands::AllowExport() {
  const bool hasResult = !host_.LookUpFile(PlacesOf(program_).LastRun()).empty();
  form_.findChild<QAction*>("mnuFileExport")->setEnabled(hasResult);
}

void RunCommands::ShowRun(bool isDemo) {
  if (!host_.Runs().IsOn()) return;
  given_.reset();
  std::vector<Finding> findings;
  try {
    const RunRecord& run = *host_.Runs().Run();
    const CheckedFile checked =
        CheckResponseFile(host_, JoinPath(run.DataFolder(), run.DataFile()));
    findings = checked.findings;
    if (!isDemo) given_ = checked.record;
  } catch (const RunTimeError&) {
    given_.reset();  // the solver tells what is wrong with the file
  }
  panel_.ShowRun(findings, isDemo);
}

void RunCommands::TakeEnd(bool hasValues) {
  host_.History().Keep(*host_.Runs().Run(), *host_.Runs().End(), PlacesOf(program_));
  if (hasValues) guard_([this] { ShowResult(); });
  if (table_.isVisible()) ShowRuns();
  AllowExport();
  FollowForm();
}

/// A result that cannot be read is no reason for a box: the run's report tells.
void RunCommands::ShowResult() {
  ResponseRecord record;
  try {
    record = ReadResponseFile(host_, program_.folders.LastRunPath);
  } catch (const RunTimeError&) {
    return;
  }
  constexpr std::int64_t kNanosecondsPerMillisecond = 1'000'000;
  const auto state = host_.StateOfFile(program_.folders.LastRunPath);
  curves_.Live().ShowResult(record,
                            ClockText(state ? state->modified / kNanosecondsPerMillisecond : 0));
}

bool RunCommands::IsOutdated(const std::optional<ResponseRecord>& given) const {
  if (!given) return false;
  try {
    return !StateSameProblem(*given, RecordOf(program_));
  } catch (const RunTimeError&) {
    return true;  // the form has more rows than a file holds
  }
}

void RunCommands::FollowForm() {
  if (host_.Runs().End()) panel_.SetOutdated(IsOutdated(given_));
  std::erase_if(reports_, [](const OpenReport& report) { return report.viewer.isNull(); });
  for (const auto& [viewer, given] : reports_) viewer->SetOutdated(IsOutdated(given));
}

void RunCommands::ShowLastReport() {
  const std::string file = host_.Runs().Run() ? host_.Runs().Run()->DataFile() : std::string();
  ShowReport({file, host_.ReadFile(PlacesOf(program_).Report())}, given_);
}

void RunCommands::ShowReport(const ReportViewer::Report& report,
                             const std::optional<ResponseRecord>& given) {
  auto* viewer = new ReportViewer(report, [this](const ReportViewer::Report& shown) {
    guard_([&] { SaveCopy(host_, shown); });
  });
  viewer->SetOutdated(IsOutdated(given));
  viewer->show();
  reports_.push_back({viewer, given});
}

void RunCommands::ShowRuns() {
  table_.ShowRuns(host_.History().All());
}

void RunCommands::Do(RunAction action, const std::vector<KeptRun>& runs) {
  if (action == RunAction::copyTable) {
    return QGuiApplication::clipboard()->setText(table_.TableText());
  }
  if (runs.empty()) return;
  switch (action) {
    case RunAction::report:
      return ShowKeptReport(runs.front());
    case RunAction::compare:
      return Compare(runs.front(), runs.back());
    case RunAction::takeValues:
    case RunAction::openInput:
      return TakeOnForm(runs.front(), action == RunAction::openInput);
    case RunAction::pin:
      host_.History().SetPinned(runs.front(), !runs.front().isPinned);
      return ShowRuns();
    case RunAction::note:
      return EditNote(runs.front());
    case RunAction::remove:
      return Delete(runs);
    case RunAction::copyTable:
      break;
  }
}

void RunCommands::ShowKeptReport(const KeptRun& run) {
  if (!run.hasReport) return;
  const RunContents contents = host_.History().ContentsOf(run);
  ShowReport({run.file, contents.report}, GivenIn(contents));
}

void RunCommands::Compare(const KeptRun& one, const KeptRun& other) {
  // The older one is A.
  const auto& [a, b] = one.started <= other.started ? std::tie(one, other) : std::tie(other, one);
  const std::vector<ComparedTable> tables =
      CompareRuns({a, host_.History().ContentsOf(a)}, {b, host_.History().ContentsOf(b)});
  CompareDialog(tables, {TitleOf("A", a), TitleOf("B", b)}, &form_).exec();
}

void RunCommands::TakeOnForm(const KeptRun& run, bool isInput) {
  const RunContents contents = host_.History().ContentsOf(run);
  HideCellEditor(program_.windows.grids, false);
  form_.RecordStep(QObject::tr("Typing"));
  if (AskBeforeReplacing(program_) == kStop) return;
  ShowAsNew(program_, isInput ? contents.input : contents.values);
  program_.document.nameForSaveAs = run.file;
  form_.RecordStep(isInput ? QObject::tr("Open Its Input") : QObject::tr("Take These Values"),
                   StepKind::replacesDocument);
  form_.ShowState();
  formChanged();
}

void RunCommands::EditNote(const KeptRun& run) {
  bool isTaken = false;
  const QString note =
      QInputDialog::getText(&form_, QObject::tr("Note"), QObject::tr("&Note on this run:"),
                            QLineEdit::Normal, QString::fromStdString(run.note), &isTaken);
  if (!isTaken) return;
  host_.History().SetNote(run, note.toStdString());
  ShowRuns();
}

void RunCommands::Delete(const std::vector<KeptRun>& runs) {
  const std::string what = runs.size() == 1 ? "the run of '" + runs.front().file + "'"
                                            : std::to_string(runs.size()) + " runs";
  const Choice choice{"Delete " + what + " from the history?", {"Delete", "Keep"}};
  if (host_.Ask(choice) != 0) return;
  for (const KeptRun& run : runs) host_.History().Delete(run);
  ShowRuns();
}

void RunCommands::DrawTicked(const std::vector<KeptRun>& runs) {
  std::vector<NamedAnswers> answers;
  answers.reserve(runs.size());
  for (const KeptRun& run : runs) {
    answers.push_back({run.file + ' ' + ClockText(run.started).toStdString(),
                       ReadResponseBytes(host_.History().ContentsOf(run).values)});
  }
  curves_.Live().ShowOthers(answers);
}

void RunCommands::Copy(const ExportFormatName& format, const std::string& values,
                       const std::string& file) {
  const std::vector<std::string> faults = CopyAs(
      ReadResponseBytes(values), {format.format, false, file, host_.FormatNow("%Y-%m-%d %H:%M")});
  if (faults.empty()) return;
  host_.MessageBox(faults.front(), message_style::kExclamation, "Copy As");
}

}  // namespace polefit

// How long the window takes: from the start of the process to its first paint, against an empty
// window of the same toolkit; to show a file with as many points as there can be; for a key press
// in the grids that are then filled; to judge them, to paste and undo as many rows, and to import
// them. The start is measured again with a full history of runs.

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QMainWindow>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>
#include <fstream>
#include <vector>

#include "app/form_load.h"
#include "app/import_points.h"
#include "base/number.h"
#include "bench/window_timing.h"
#include "check/form_findings.h"
#include "form/history.h"
#include "form/table_edits.h"
#include "form/transfer.h"
#include "grids/grid_routines.h"
#include "grids/ui/grid_widget.h"
#include "platform/paths.h"
#include "program/ui/program_host.h"
#include "program/ui/session.h"
#include "responsefile/writer.h"
#include "runs/run_history.h"

namespace polefit {
namespace {

constexpr int kStarts = 21;
constexpr int kPoints = 32766;

int RunEmptyWindow() {
  QMainWindow window;
  window.resize(1024, 700);
  window.show();
  return QApplication::exec();
}

int RunForm() {
  ProgramHost host;
  Session session(host, {});
  session.Start();
  return QApplication::exec();
}

/// Measures `action` with all that it paints.
template <typename Action>
void Print(const char* what, int times, Action action) {
  const Times taken = Measure(times, [&] {
    action();
    QApplication::processEvents();
  });
  std::printf("  %-28s %6.2f ms, at most %6.2f\n", what, taken.middle, taken.longest);
}

void WriteLargestFile(Program& program) {
  ResponseRecord record = program.document.record;
  record.nFreqPoints = record.nDelayPoints = kPoints;
  record.Slot(slot::kFreqPointCount) = record.Slot(slot::kDelayPointCount) = SignedText(kPoints);
  record.passband.Resize(kPoints + 1);
  record.delay.Resize(kPoints + 1);
  for (int row = 1; row <= kPoints; ++row) {
    const std::string number = std::to_string(row * 0.001);
    for (int column = 1; column <= 4; ++column) record.passband.At(row, column) = number;
    for (int column = 1; column <= 2; ++column) record.delay.At(row, column) = number;
  }
  WriteResponseFile(program.host, record, {program.folders.ProgramFolder, "largest.txt"});
}

void PressKeys(MainWindow& form, const char* name, Tab tab) {
  form.SelectTab(tab);
  auto* grid = form.findChild<GridWidget*>(name);
  const auto press = [](int key) {
    return [key] { QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key)); };
  };
  const auto from = [&](int row) {
    grid->setFocus();
    grid->SetCurrentRow(row);
    QApplication::processEvents();
  };
  from(100);
  std::printf("%s\n", name);
  Print("arrow in the grid", 200, press(Qt::Key_Down));
  Print("page down in the grid", 50, press(Qt::Key_PageDown));
  Print("first character", 1, press(Qt::Key_7));
  Print("further characters", 20, press(Qt::Key_8));
  Print("down in the editor", 200, press(Qt::Key_Down));
  Print("enter", 1, press(Qt::Key_Return));
  from(grid->RowCount() - 3);
  press(Qt::Key_7)();
  Print("down with a row added", 20, press(Qt::Key_Down));
  press(Qt::Key_Escape)();
}

/// From a key to its findings, and the steps of a block as large as the table.
void EditTable(Session& session, MainWindow& form) {
  Program& program = session.Values();
  auto* grid = form.findChild<GridWidget*>("PassData");
  std::string block;
  for (int row = 1; row <= kPoints; ++row) {
    const std::string number = std::to_string(row * 0.001);
    block += number + "\t" + number + "\t" + number + "\t1\r\n";
  }
  QApplication::clipboard()->setText(QString::fromStdString(block));
  form.SelectTab(Tab::passbandData);
  form.SetChecked("chkUseWeights", true);
  const auto choose = [&form](const char* entry) {
    return [&form, entry] { form.findChild<QAction*>(entry)->trigger(); };
  };
  std::printf("Edit\n");
  Print("judge the form", 9, [&] { FindingsOf(program); });
  for (int i = 0; i < 5; ++i) {
    grid->setFocus();
    grid->SetCurrentCell(1, 1);
    ClearGrid(program.windows.grids, *grid);
    form.RecordStep("Clear");
    Print("paste all rows", 1, choose("mnuEditPaste"));
    Print("undo it", 1, choose("mnuEditUndo"));
    Print("redo it", 1, choose("mnuEditRedo"));
  }
  History history(program);
  FormCells cells = CellsOf(program);
  ClearBlock(cells, Table::passband, {1, kPoints, 1, 4});
  ShowCells(program, cells);
  history.Record("clear");
  std::printf("  %-28s %6.2f MB\n", "a step of all cells takes",
              static_cast<double>(history.Bytes()) / 1e6);
}

/// From a measured file to what its import would bring, and from there to the form.
void ImportLargestFile(Program& program) {
  const std::string path = program.folders.ProgramFolder + "/sweep.s2p";
  std::ofstream file(path);
  file << "# Hz S DB R 50\n";
  for (int row = 1; row <= kPoints; ++row) {
    file << row * 1000 << " -20.123 10.5 " << row * -0.001 << " -12.25 " << row * -0.001
         << " -12.25 -20.123 10.5\n";
  }
  file.close();
  QElapsedTimer timer;
  timer.start();
  ImportPoints(program, {path}, [&timer](ImportPlan& plan, const FormCells& form, const auto&) {
    plan.startsProblem = false;
    PreviewOf(plan, form);
    std::printf("  %-28s %6lld ms\n", "measured file to preview", timer.restart());
    return true;
  });
  QApplication::processEvents();
  std::printf("  %-28s %6lld ms\n", "OK to the form", timer.elapsed());
}

void MeasureLargestFile() {
  ProgramHost host;
  Session session(host, {});
  session.Start();
  Program& program = session.Values();
  auto& form = dynamic_cast<MainWindow&>(program.windows.frmMain);
  QApplication::processEvents();
  WriteLargestFile(program);
  const std::string path = program.folders.ProgramFolder + "/largest.txt";
  std::printf("%d + %d points\n", kPoints, kPoints);
  Print("open the file", 9, [&] { OpenNamedFile(program, path); });
  Print("show the record", 9, [&] { GetAnswers(program); });
  PressKeys(form, "PassData", Tab::passbandData);
  PressKeys(form, "DelayData", Tab::delayData);
  EditTable(session, form);
  ImportLargestFile(program);
}

/// Fills the history with as many runs as it keeps.
int KeepRuns() {
  ProgramHost host;
  const std::string folder = Places::OfState(host).Runs();
  QDir().mkpath(QString::fromStdString(folder));
  const std::string text(5000, '1');
  for (int i = 0; i < 200; ++i) {
    const std::string id = std::to_string(1'700'000'000'000 + i) + "-1";
    const KeptRun run{
        .id = id, .started = 1'700'000'000'000 + i, .file = "vna.1", .folder = folder};
    host.ReplaceFile(JoinPath(folder, id + ".run"), BytesOf(run, {text, text, text}),
                     Readers::ownerOnly);
  }
  return RunHistory(host).All().size() == 200 ? 0 : 1;
}

/// Installs the running program in a folder of its own and measures it there.
int MeasureAll() {
  const QTemporaryDir base;
  const QString program = InstallForTiming(base.path());
  const std::vector<double> times = StartTimes(program, {"empty", "form"}, kStarts);
  std::printf("start to first paint: empty window %.1f ms, main form %.1f ms, %.2f times\n",
              times[0], times[1], times[1] / times[0]);
  if (QProcess::execute(program, {"keep"}) != 0) return 1;
  std::printf("the same with 200 runs in the history: main form %.1f ms\n",
              StartTimes(program, {"form"}, kStarts)[0]);
  std::fflush(stdout);
  return QProcess::execute(program, {"largest"});
}

int Run(const QString& what) {
  FirstPaint ending;
  if (what == "empty" || what == "form") qApp->installEventFilter(&ending);
  if (what == "empty") return RunEmptyWindow();
  if (what == "form") return RunForm();
  if (what == "keep") return KeepRuns();
  if (what != "largest") return MeasureAll();
  MeasureLargestFile();
  std::fflush(stdout);
  std::_Exit(0);
}

}  // namespace
}  // namespace polefit

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  return polefit::Run(argc > 1 ? argv[1] : "");
}

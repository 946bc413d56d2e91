// How long the curves beside the tabs take: from a key in a box until all diagrams are drawn again,
// at 21, 1,000 and 32,766 points; a key while a preview of the largest table is being solved; the
// preview of each example; the start to the first paint with the pane and without; and memory.

#include <QApplication>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <vector>

#include "base/number.h"
#include "base/text_format.h"
#include "bench/window_timing.h"
#include "form/transfer.h"
#include "form/ui/main_window.h"
#include "platform/linux/console_host.h"
#include "plots/kept_choices.h"
#include "plots/preview_worker.h"
#include "plots/ui/curves_dock.h"
#include "program/ui/program_host.h"
#include "program/ui/session.h"
#include "responsefile/reader.h"

namespace polefit {
namespace {

constexpr int kStarts = 11;

int RunForm(bool hasPane) {
  ProgramHost host;
  KeptChoices choices;
  choices.isShown = hasPane;
  KeepChoices(host, choices);
  Session session(host, {});
  session.Start();
  return QApplication::exec();
}

double ResidentMegabytes() {
  double pages = 0;
  double resident = 0;
  std::ifstream("/proc/self/statm") >> pages >> resident;
  return resident * 4096 / 1e6;
}

ResponseRecord ReadExample(const std::string& name) {
  ConsoleHost host;
  ResponseRecord record;
  std::string storedName;
  std::string folder;
  host.OpenForReading(std::string(EXAMPLES) + "/" + name);
  ReadResponse(host, record, storedName, folder);
  return record;
}

/// An example with so many rows, those of its own curves.
ResponseRecord WithRows(int rows) {
  ResponseRecord record = ReadExample("Ex-Zpair.1");
  if (rows == record.nFreqPoints) return record;
  record.nFreqPoints = static_cast<std::int16_t>(rows);
  record.Slot(slot::kFreqPointCount) = SignedText(static_cast<std::int16_t>(rows));
  record.passband.Resize(rows + 1);
  for (int row = 1; row <= rows; ++row) {
    const double share = (row - 1.0) / (rows - 1);
    const double texts[] = {10 * share, 1 - .36 * share * share, std::abs(std::cos(1.57 * share)),
                            1};
    for (int column = 1; column <= 4; ++column) {
      record.passband.At(row, column) = Format("%.6f", texts[column - 1]);
    }
  }
  return record;
}

struct Pane {
  ProgramHost host;
  MainWindow form;
  Program program{host, form};
  CurvesDock* dock = nullptr;
  bool isOther = false;

  Pane() {
    form.Attach(program);
    dock = new CurvesDock(form, program);
    form.resize(1400, 800);
    form.show();
    dock->show();
    QApplication::processEvents();
  }

  void Open(const ResponseRecord& record) {
    program.document.record = record;
    GetAnswers(program);
    dock->Live().Update();
    QApplication::processEvents();
  }

  /// A key changes a pole, and everything is drawn again.
  void Key() {
    isOther = !isOther;
    form.SetText("poleReal", isOther ? ".51 .5 .4 .3" : ".5 .5 .4 .3");
    dock->Live().Update();
    QApplication::processEvents();
  }
};

void MeasureRedraw() {
  Pane pane;
  for (const int rows : {21, 1000, 32766}) {
    pane.Open(WithRows(rows));
    std::printf("redraw after a key, %5d rows   %7.2f ms\n", rows,
                Measure(31, [&] { pane.Key(); }).middle);
  }
  std::printf("memory with 32766 rows          %7.1f MB\n", ResidentMegabytes());
  pane.dock->Live().SetPreview(true);
  auto* box = pane.form.findChild<QLineEdit*>("nYzeros");
  pane.form.SetFocus("nYzeros");
  std::printf("key while 32766 rows are solved %7.2f ms\n", Measure(31, [&] {
                                                              QTest::keyClick(box, Qt::Key_0);
                                                              QApplication::processEvents();
                                                              QTest::keyClick(box,
                                                                              Qt::Key_Backspace);
                                                            }).middle);
  std::fflush(stdout);
}

void MeasurePreviews() {
  for (const char* const name : {"Ex-Yzero.101", "Ex-Yzero.102", "Ex-CNTL.1", "Ex-Zpair.1",
                                 "Ex-Delay.101", "Ex-Delay.111", "Ex-Delay.112"}) {
    const ResponseRecord record = ReadExample(name);
    std::printf("preview of %-14s       %7.2f ms\n", name,
                Measure(11, [&] { MakePreview(record, [] { return false; }); }).middle);
  }
  std::fflush(stdout);
}

void MeasureStarts() {
  const QTemporaryDir base;
  const QString program = InstallForTiming(base.path());
  const std::vector<double> times = StartTimes(program, {"without", "with"}, kStarts);
  std::printf("start to first paint: without the pane %.1f ms, with it %.1f ms, %.2f times\n",
              times[0], times[1], times[1] / times[0]);
}

int Run(const QString& what) {
  FirstPaint ending;
  if (what == "with" || what == "without") {
    qApp->installEventFilter(&ending);
    return RunForm(what == "with");
  }
  MeasureRedraw();
  MeasurePreviews();
  MeasureStarts();
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

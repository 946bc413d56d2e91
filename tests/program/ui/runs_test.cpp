#include <gmock/gmock.h>

#include <QClipboard>
#include <QComboBox>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QInputDialog>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTextBlock>
#include <QTreeWidget>

#include "plots/ui/diagram_view.h"
#include "program/ui/installed_program.h"
#include "runs/ui/error_plot.h"

namespace polefit::testing {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// The run's panel, the table of runs and the report's window in the whole program.
struct RunsTest : InstalledProgram {
  std::string Run() {
    Choose("mnuFileSubmit");
    return Verdict();
  }
  void InstallRealSolver() {
    std::filesystem::create_symlink(POLEFIT_SOLVER, Installed("pfit"));
    for (const char* const name : {"Ex-Yzero.101", "Ex-Zpair.1"}) {
      std::filesystem::copy(std::string(POLEFIT_EXAMPLES "/") + name,
                            Installed(std::string("User/") + name));
    }
  }
  static QTreeWidget& Table() {
    The<QTabWidget>("CVX_Tabs").setCurrentIndex(6);
    return The<QTreeWidget>("lstRuns");
  }
  /// What stands in one column of the table, from its top on.
  static std::vector<std::string> Column(int column) {
    std::vector<std::string> texts;
    for (int row = 0; row < Table().topLevelItemCount(); ++row) {
      texts.push_back(Table().topLevelItem(row)->text(column).toStdString());
    }
    return texts;
  }
  /// Chooses from the menu of the table.
  static void ChooseOf(QTreeWidget& table, int row, const char* action) {
    table.clearSelection();
    table.setCurrentItem(table.topLevelItem(row));
    The("runsPane").findChild<QAction*>(action)->trigger();
  }
  static void WaitForStatus(const char* text) {
    const auto isThere = [text] { return TextOf("cmdRunState").find(text) != std::string::npos; };
    EXPECT_TRUE(QTest::qWaitFor(isThere, 60000)) << text << ": " << TextOf("cmdRunState");
  }
};

TEST_F(RunsTest, AShortGoodRunIsSaidInTheStatusBarAndAnyOtherOpensThePanelWithoutTheFocus) {
  InstallSolver("report; values; say converged");
  Start(MakeFile("run1.txt"));
  The<QTabWidget>("CVX_Tabs").setCurrentIndex(0);
  The("chkEqualDelay").setFocus();
  QElapsedTimer time;
  time.start();
  Run();
  EXPECT_TRUE(!The("frmRun").isVisible() || time.elapsed() > 1000) << "unless the machine is slow";
  EXPECT_THAT(TextOf("cmdRunState"), StartsWith("Good: "));
  InstallSolver("exit 4");
  Run();
  EXPECT_TRUE(The("frmRun").isVisible());
  EXPECT_TRUE(HasFocus("chkEqualDelay"));
  The<QDockWidget>("frmRun").close();
  InstallSolver("report; values; sleep 1.3; say converged");
  Run();
  EXPECT_TRUE(The("frmRun").isVisible()) << "it has lasted";
  EXPECT_TRUE(HasFocus("chkEqualDelay"));
  SetText("tmin", "5");
  WaitForStatus("Good (form changed since): ");
  EXPECT_TRUE(The("lblOutdated").isVisible());
}

TEST_F(RunsTest, TwoRunsAreComparedAndTheFirstOnesValuesTakenBack) {
  InstallRealSolver();
  Start(Installed("User/Ex-Yzero.101"));
  EXPECT_THAT(Run(), StartsWith("Good: "));
  const std::string first = FileBytes(Installed("last-run.ini"));
  answers.Choose("Ex-Zpair.1");
  Choose("mnuFileOpen");
  EXPECT_THAT(Run(), StartsWith("Good: "));
  const std::string before = TextOf("poleReal");
  QTreeWidget& table = Table();
  ASSERT_EQ(table.topLevelItemCount(), 2);
  table.selectAll();
  answers.PressIn("cmdCompareCopy");
  answers.Cancel();
  Click("cmdRunCompare");
  const std::string compared = QApplication::clipboard()->text().toStdString();
  EXPECT_THAT(compared, StartsWith("A: Ex-Yzero.101, "));
  EXPECT_THAT(compared, HasSubstr("\npole pair\t"));
  EXPECT_THAT(compared, HasSubstr("\n11a. omega-axis zeros\t1 1.3 1.8\t\n"));
  table.clearSelection();
  table.topLevelItem(1)->setSelected(true);
  Click("cmdRunTake");
  EXPECT_THAT(first, HasSubstr(TextOf("poleReal")));
  EXPECT_NE(TextOf("poleReal"), before);
  Choose("mnuEditUndo");
  EXPECT_EQ(TextOf("poleReal"), before);
}

TEST_F(RunsTest, ARunThatEndsWithoutAWindowIsKeptAtTheNextStart) {
  InstallSolver("until test -e go; do sleep .02; done; report; values; say converged");
  Start(MakeFile("run1.txt"));
  Choose("mnuFileSubmit");
  session.reset();
  WriteBytes(Installed("go"), "");
  const auto isOver = [this] { return FileBytes(Installed("~pft-end.txt")).size() > 3; };
  ASSERT_TRUE(QTest::qWaitFor(isOver, 60000));
  Start();
  EXPECT_EQ(Table().topLevelItemCount(), 1);
  EXPECT_EQ(Table().topLevelItem(0)->text(2), "run1.txt");
}

TEST_F(RunsTest, ALongRunDrawsItsErrorAndItsFindingsLeadToTheirPlaces) {
  const std::string example = FileBytes(POLEFIT_EXAMPLES "/Ex-Yzero.101");
  WriteBytes(Installed("User/a%2&b.1"), example);
  InstallSolver(
      "echo 'start 1  10 of 2000, rms 1e-2'; echo 'start 1  20 of 2000, rms 1e-4'; sleep 1.3\n"
      "report; values; say converged");
  Start(Installed("User/a%2&b.1"));
  SetText("LowestX_Y", "1");
  answers.Press(QMessageBox::No);
  Choose("mnuFileSubmit");
  WaitForStatus("Running a%2&&b.1: 20 of 2000 evaluations");
  Verdict();
  const auto& errors = The<ErrorPlot>("errorPlot");
  EXPECT_EQ(errors.graph(0)->dataCount(), 2);
  EXPECT_EQ(errors.yAxis->scaleType(), QCPAxis::stLogarithmic);
  EXPECT_NEAR(errors.yAxis->range().lower, 1e-4, 1e-9);
  EXPECT_NEAR(errors.yAxis->range().upper, 1e-2, 1e-9);
  auto& findings = The<QListWidget>("lstRunFindings");
  ASSERT_GT(findings.count(), 0);
  The<QTabWidget>("CVX_Tabs").setCurrentIndex(0);
  findings.setCurrentRow(0);
  QTest::keyClick(&findings, Qt::Key_Return);
  EXPECT_NE(The<QTabWidget>("CVX_Tabs").currentIndex(), 0);
  The("frmRun").findChild<QAction*>("copyAs-json")->trigger();
  EXPECT_THAT(QApplication::clipboard()->text().toStdString(), HasSubstr("\"freqNormMHz\""));
  The("txtOutput").setFocus();
  QTest::keyClick(&The("txtOutput"), Qt::Key_Return);
  EXPECT_EQ(The("viewerText").window()->windowTitle(), "Report of a%2&b.1");
  EXPECT_FALSE(The("lblReportOutdated").isVisible());
  SetText("LowestX_Y", "2");
  EXPECT_TRUE(Comes([] { return The("lblReportOutdated").isVisible(); }));
}

TEST_F(RunsTest, TheTableSortsByNumbersDrawsWhatIsTickedAndKeepsNotes) {
  for (const char* const name : {"one.1", "two.1", "three.1"}) {
    WriteBytes(Installed(std::string("User/") + name), FileBytes(POLEFIT_EXAMPLES "/Ex-Yzero.101"));
  }
  Start();
  const std::pair<const char*, const char*> runs[] = {
      {"one.1", ".12"}, {"two.1", ".009"}, {"three.1", ".02"}};
  for (const auto& [name, rms] : runs) {
    InstallSolver(std::string("report; values; say converged\necho 'pfit-end: exit=0 ipower=0 ") +
                  "poles=8 zeros=6 F=" + rms + " rms=" + rms + "'");
    answers.Choose(name);
    Choose("mnuFileOpen");
    Run();
  }
  QTreeWidget& table = Table();
  EXPECT_THAT(Column(2), ::testing::ElementsAre("three.1", "two.1", "one.1")) << "the newest first";
  EXPECT_EQ(The("cmdSubmit").nextInFocusChain(), &table);
  EXPECT_GE(table.columnWidth(2), static_cast<QAbstractItemView&>(table).sizeHintForColumn(2))
      << "wider than at the first run";
  The<QTabWidget>("CVX_Tabs").window()->resize(921, 630);
  QCoreApplication::processEvents();
  const auto& page = dynamic_cast<QScrollArea&>(*The<QTabWidget>("CVX_Tabs").currentWidget());
  EXPECT_LE(page.widget()->minimumSizeHint().width(), page.viewport()->width());
  table.sortByColumn(5, Qt::AscendingOrder);
  EXPECT_THAT(Column(5), ::testing::ElementsAre("0.9 %", "2 %", "12 %"));
  answers.Do([](QDialog& dialog) {
    dynamic_cast<QInputDialog&>(dialog).setTextValue("the best\tone");
    dialog.accept();
  });
  ChooseOf(table, 0, "actRunNote");
  ChooseOf(table, 0, "actRunPin");
  EXPECT_THAT(Column(9), ::testing::ElementsAre("[pinned] the best one", "", ""));
  The("runsPane").findChild<QAction*>("actRunCopyTable")->trigger();
  const QStringList lines = QApplication::clipboard()->text().split('\n');
  ASSERT_EQ(lines.size(), 5) << "three runs between heading and end";
  EXPECT_EQ(lines[1].count('\t'), lines[0].count('\t'));

  Choose("mnuViewCurves");
  table.topLevelItem(0)->setCheckState(0, Qt::Checked);
  table.topLevelItem(2)->setCheckState(0, Qt::Checked);
  const auto isDrawn = [](const char* name) {
    return std::ranges::any_of(The<DiagramView>("DiagramUpper").Shown().series,
                               [name](const Series& one) { return one.name.starts_with(name); });
  };
  const auto areBoth = [&] { return isDrawn("one.1 ") && isDrawn("two.1 "); };
  EXPECT_TRUE(Comes(areBoth));
  table.setCurrentItem(table.topLevelItem(2), 0, QItemSelectionModel::Clear);
  QTest::keyClick(&table, Qt::Key_Return);
  EXPECT_THAT(Titles(), Contains("Report of one.1"));
  answers.Cancel();
  ChooseOf(table, 2, "actRunDelete");
  EXPECT_EQ(table.topLevelItemCount(), 3) << "asked";
  answers.Do([](QDialog& dialog) { dialog.findChildren<QPushButton*>().front()->click(); });
  ChooseOf(table, 2, "actRunDelete");
  EXPECT_THAT(Column(2), ::testing::ElementsAre("two.1", "three.1"));
  const auto isOneGone = [&] { return !isDrawn("one.1 ") && isDrawn("two.1 "); };
  EXPECT_TRUE(Comes(isOneGone));
  ChooseOf(table, 0, "actRunInput");
  EXPECT_THAT(Titles(), Contains(StartsWith("New data")));
  EXPECT_EQ(TextOf("poleReal"), ".5 .5 .4 .3");
}

TEST_F(RunsTest, TheReportIsSearchedAndItsSectionsAreReached) {
  InstallRealSolver();
  Start(Installed("User/Ex-Yzero.101"));
  Run();
  Click("cmdReport");
  auto& text = The<QPlainTextEdit>("viewerText");
  EXPECT_EQ(text.window()->windowTitle(), "Report of Ex-Yzero.101");
  auto& sections = The<QComboBox>("reportSections");
  EXPECT_GT(sections.count(), 5);
  sections.setCurrentIndex(3);
  Q_EMIT sections.activated(3);
  EXPECT_EQ(text.textCursor().block().text().trimmed(), sections.itemText(3));
  SetText("reportFind", "End of report");
  QTest::keyClick(&The("reportFind"), Qt::Key_Return);
  EXPECT_EQ(text.textCursor().selectedText(), "End of report");
  SetText("reportFind", "nowhere");
  QTest::keyClick(&The("reportFind"), Qt::Key_Return);
  EXPECT_EQ(TextOf("lblReportFound"), "Not found");
  QApplication::setActiveWindow(text.window());
  SetText("reportFind", "e");
  const auto press = [&](Qt::Key key, Qt::KeyboardModifiers held = {}) {
    QTest::keyClick(text.window(), key, held);
    return text.textCursor().position();
  };
  const int at = press(Qt::Key_F3);
  EXPECT_NE(press(Qt::Key_F3), at);
  EXPECT_EQ(press(Qt::Key_F3, Qt::ShiftModifier), at) << "there and back";
  const double size = text.font().pointSizeF();
  press(Qt::Key_Equal, Qt::ControlModifier);
  EXPECT_GT(text.font().pointSizeF(), size);
  press(Qt::Key_0, Qt::ControlModifier);
  EXPECT_EQ(text.font().pointSizeF(), size);
  press(Qt::Key_F, Qt::ControlModifier);
  QTest::keyClicks(&The("reportFind"), "poles");
  EXPECT_EQ(text.textCursor().selectedText().toLower(), "poles") << "while it is typed";
  press(Qt::Key_Escape);
  EXPECT_TRUE(text.isVisible() && text.hasFocus()) << "Esc leaves the box first";
  answers.Choose(root.File("copy.txt"));
  Click("cmdReportSave");
  EXPECT_EQ(FileBytes(root.File("copy.txt")), FileBytes(Installed("~pft-out.txt")));
  QTest::keyClick(text.window(), Qt::Key_Escape);
}

}  // namespace
}  // namespace polefit::testing

#include <gmock/gmock.h>

#include <QClipboard>
#include <QComboBox>
#include <QDockWidget>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTextBlock>
#include <QTreeWidget>

#include "program/ui/installed_program.h"

namespace polefit::testing {
namespace {

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
  static void WaitForStatus(const char* text) {
    const auto isThere = [text] { return TextOf("cmdRunState").find(text) != std::string::npos; };
    EXPECT_TRUE(QTest::qWaitFor(isThere)) << text << ": " << TextOf("cmdRunState");
  }
};

TEST_F(RunsTest, AShortGoodRunIsSaidInTheStatusBarAndAnyOtherOpensThePanelWithoutTheFocus) {
  InstallSolver("report; values; say converged");
  Start(MakeFile("run1.txt"));
  The<QTabWidget>("CVX_Tabs").setCurrentIndex(0);
  The("chkEqualDelay").setFocus();
  Run();
  EXPECT_FALSE(The("frmRun").isVisible());
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
  ASSERT_TRUE(QTest::qWaitFor(isOver));
  Start();
  EXPECT_EQ(Table().topLevelItemCount(), 1);
  EXPECT_EQ(Table().topLevelItem(0)->text(2), "run1.txt");
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
  delete text.window();
}

}  // namespace
}  // namespace polefit::testing

#include <gmock/gmock.h>

#include <QClipboard>
#include <QTabWidget>
#include <QTableWidget>

#include "form/cells.h"
#include "grids/ui/grid_widget.h"
#include "program/ui/installed_program.h"

namespace polefit::testing {
namespace {

/// An example that has been saved, with a version before it, and the values of a run.
class StepsTest : public InstalledProgram {
 protected:
  StepsTest() {
    const std::string path = Installed("User/Ex-Yzero.101");
    std::filesystem::copy(POLEFIT_EXAMPLES "/Ex-Yzero.101", path);
    std::filesystem::copy(POLEFIT_EXAMPLES "/Ex-Yzero.102", Installed("last-run.ini"));
    Start(path);
    SetText("tmin", "6");
    Choose("mnuFileSave");
    EXPECT_TRUE(QTest::qWaitForWindowActive(The("CVX_Tabs").window()));
  }

  FormCells Cells() { return CellsOf(session->Values()); }
  /// The name of the step that Undo takes back.
  static std::string Undoes() {
    return The<QAction>("mnuEditUndo").text().remove("&Undo ").toStdString();
  }
  static void Press(const QString& button) { The<QAbstractButton>(button).click(); }
  /// The passband table with its first two rows selected, and the focus on it.
  static void SelectRows() {
    The<QTabWidget>("CVX_Tabs").setCurrentIndex(3);
    The("CVX_Tabs").window()->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(The("CVX_Tabs").window()));
    auto& grid = The<GridWidget>("PassData");
    grid.setFocus();
    grid.SetCurrentCell(1, 1);
    grid.SelectBlock({1, 2, 1, 3});
  }
  void Cure() {
    session->Values().windows.frmMain.PassData().SetText(2, 2, "0,5");
    auto& list = The<QTableWidget>("lstFindings");
    ASSERT_TRUE(Comes([&list] { return list.cellWidget(0, 1) != nullptr; }));
    list.cellWidget(0, 1)->findChild<QPushButton*>()->click();
    EXPECT_TRUE(
        Comes([this] { return session->Values().windows.frmMain.PassData().Text(2, 2) == "0.5"; }));
  }
};

TEST_F(StepsTest, EachCommandThatChangesTheDataIsOneStepThatComesBack) {
  const auto no = [this] { answers.Press(QMessageBox::No); };
  Choose("mnuViewFindings");
  struct Case {
    const char* name;
    std::function<void()> command;
  };
  const Case cases[] = {
      {"New",
       [&] {
         no();
         answers.Press(QMessageBox::Ok);
         Choose("mnuFileNew");
       }},
      {"Open",
       [&] {
         no();
         answers.Choose(MakeFile("other.1", "12"));
         Choose("mnuFileOpen");
       }},
      {"Former Versions",
       [&] {
         answers.PressIn("cmdPutBack");
         no();
         Choose("mnuFileVersions");
       }},
      {"Take Improved Values",
       [&] {
         no();
         Choose("mnuFitTakeImproved");
       }},
      {"Edit Defaults", [] { Press("cmdEditSolver"); }},
      {"Clear Columns", [] { Press("cmdClearPassData"); }},
      {"Fill Column",
       [&] {
         The<QTabWidget>("CVX_Tabs").setCurrentIndex(0);
         answers.PressIn("cmdFill");
         Choose("mnuEditFillColumn");
       }},
      {"Paste",
       [] {
         QApplication::clipboard()->setText("1.5\t1\r\n2.5\t1\r\n");
         SelectRows();
         Choose("mnuEditPaste");
       }},
      {"Delete",
       [] {
         SelectRows();
         Choose("mnuEditDelete");
       }},
  };
  for (const Case& one : cases) {
    const FormCells before = Cells();
    one.command();
    const FormCells after = Cells();
    EXPECT_FALSE(after == before) << one.name;
    EXPECT_EQ(Undoes(), one.name);
    Choose("mnuEditUndo");
    EXPECT_TRUE(Cells() == before) << one.name;
    Choose("mnuEditRedo");
    EXPECT_TRUE(Cells() == after) << one.name;
    Choose("mnuEditUndo");
  }
}

TEST_F(StepsTest, WhatIsOfferedOrSuggestedIsOneStepTooAndComesBack) {
  Choose("mnuViewFindings");
  Press("cmdEditSolver");
  const FormCells edited = Cells();
  Press("cmdUseDefSolver");
  Choose("mnuEditUndo");
  EXPECT_TRUE(Cells() == edited);
  Cure();
  EXPECT_EQ(Undoes(), "Commas to Points");
  Choose("mnuEditUndo");
  EXPECT_EQ(session->Values().windows.frmMain.PassData().Text(2, 2), "0,5");
  Choose("mnuEditUndo");
  EXPECT_TRUE(Cells() == edited);
  SetText("poleReal", "");
  SetText("poleImag", "");
  const FormCells empty = Cells();
  Choose("mnuFitSuggest");
  EXPECT_NE(TextOf("poleReal"), "");
  Choose("mnuEditUndo");
  EXPECT_TRUE(Cells() == empty);
  const std::string name = TextOf("LastFileName");
  Choose("mnuFileExit");
  Start();
  const FormCells started = Cells();
  QTest::mouseClick(&The("cmdNotice1"), Qt::LeftButton);
  EXPECT_TRUE(TextOf("poleReal").empty()) << "restored";
  EXPECT_EQ(session->Values().files.currentFileName, name);
  Choose("mnuEditUndo");
  EXPECT_TRUE(Cells() == started) << "the former file's name too";
}

}  // namespace
}  // namespace polefit::testing

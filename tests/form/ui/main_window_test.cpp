#include "form/ui/main_window.h"

#include <QCheckBox>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>

#include "form/ui/main_form.h"
#include "widgets/answer_edit.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

class FrmMainTest : public MainForm {};

TEST_F(FrmMainTest, AFreshFormGivesTheBuiltInAnswers) {
  EXPECT_THAT(program.document.record.slots,
              ElementsAre("N", "76.7", "-2", "-2", "N", "10", "10", "1  4", ".02", ".1 .1 .1 .1",
                          ".2 .3 .4 .5", "N", ".05", "N", "N", "0 0 0", "1.111", ".01", ".01", "1",
                          ".005", "22", " 0", " 0"));
  EXPECT_EQ(program.document.record.Note1, "Keep notes for future runs");
  EXPECT_EQ(program.document.record.Note2, "Your notes go here");
  EXPECT_EQ(program.document.record.solver[1], "0 0 0");
}

TEST_F(FrmMainTest, EveryEditAndClickMarksTheDataChanged) {
  int boxes = 0;
  for (const QWidget* box : form.findChildren<QWidget*>()) {
    if (!qobject_cast<const AnswerEdit*>(box) && !qobject_cast<const QCheckBox*>(box)) continue;
    ++boxes;
    EnableAll();
    form.SetFocus(box->objectName().toStdString());
    Press(Qt::Key_Space);
    EXPECT_EQ(program.document.DataChanged, 1) << FocusName();
    EXPECT_TRUE(box->hasFocus()) << FocusName();
  }
  EXPECT_EQ(boxes, 30 + 5);
  EXPECT_TRUE(Find<QLineEdit>("LastFileName").isReadOnly()) << "it shows no answer";
}

TEST_F(FrmMainTest, BoxesThatSelectAllDoSoByKeyAndByMouseAndTheOthersKeepTheCaret) {
  EnableAll();
  for (const bool byMouse : {false, true}) {
    std::vector<std::string> others;
    for (AnswerEdit* box : form.findChildren<AnswerEdit*>()) {
      const std::string name = box->objectName().toStdString();
      form.SetText(name, "12345");
      form.SetFocus(name);  // brings its tab to the front
      box->clearFocus();
      box->deselect();
      if (byMouse) {
        Click(name);
      } else {
        box->setFocus(Qt::TabFocusReason);
      }
      const std::string selected = box->selectedText().toStdString();
      if (selected != "12345") others.push_back(name + selected);
    }
    EXPECT_THAT(others, UnorderedElementsAre("nPoles", "nYzeros", "nZpairs", "nZquads", "Gain",
                                             "LowestX_Y", "maxX_Y", "StepsLim", "StepOut",
                                             "EvalMax", "SetRho", "Ratio", "Accuracy"))
        << "by mouse: " << byMouse;
  }
}

TEST_F(FrmMainTest, AFieldRuleWaitsUntilTheFocusLeaves) {
  Press(Qt::Key_Space);
  EXPECT_FALSE(form.IsEnabled("tmin"));
  Press(Qt::Key_Tab);
  EXPECT_TRUE(form.IsEnabled("tmin"));
  form.SetFocus("chkEqualDelay");
  Press(Qt::Key_Space, Qt::Key_Tab);
  EXPECT_FALSE(form.IsEnabled("tmin"));
  EXPECT_EQ(FocusName(), "iPower") << "a box that is disabled passes the focus on";

  form.SetFocus("nPoles");
  Press(Qt::Key_Home, Qt::Key_0);
  EXPECT_TRUE(form.IsEnabled("sigmaPoles"));
  Click("poleReal");
  EXPECT_FALSE(form.IsEnabled("sigmaPoles"));
}

TEST_F(FrmMainTest, TheFocusGoesToTheBoxThatTheRuleHasJustWoken) {
  Press(Qt::Key_Space, Qt::Key_Tab);
  EXPECT_EQ(FocusName(), "tmin");
  form.SetFocus("nYzeros");
  Press(Qt::CTRL | Qt::Key_A, Qt::Key_1);
  Click("Yzero");
  EXPECT_EQ(FocusName(), "Yzero");
  form.SetFocus("nYzeros");
  Press(Qt::CTRL | Qt::Key_A, Qt::Key_0);
  QWidget* page = Find<QTabWidget>("CVX_Tabs").currentWidget()->findChild<QWidget*>("lblNote2");
  QTest::mouseClick(page, Qt::LeftButton);
  EXPECT_FALSE(form.IsEnabled("Yzero")) << "a click on the page leaves the box";
}

TEST_F(FrmMainTest, AnEmptyCountIsToldBelowItsBoxesWhileItIsEmpty) {
  form.SelectTab(Tab::polesAndZeros);
  const auto& note = Find<QLabel>("lblEmptyCount");
  EXPECT_FALSE(note.isVisible());
  form.SetText("nZquads", "");
  EXPECT_TRUE(note.isVisible());
  EXPECT_THAT(note.text().toStdString(), ::testing::EndsWith("Type 0 for none."));
  form.SetText("nZquads", "0");
  EXPECT_FALSE(note.isVisible());
}

TEST_F(FrmMainTest, AnAbandonedMenuIsNoLeavingAndWhatFollowsIs) {
  form.SetFocus("nPoles");
  Press(Qt::Key_Home, Qt::Key_0, Qt::Key_Space);
  form.menuBar()->setFocus(Qt::MenuBarFocusReason);
  EXPECT_TRUE(form.IsEnabled("sigmaPoles"));
  Find<QWidget>("poleReal").setFocus(Qt::MouseFocusReason);
  EXPECT_FALSE(form.IsEnabled("sigmaPoles"));

  form.SelectTab(Tab::passbandData);
  ShowPoints(5);
  auto& grid = Find<GridWidget>("PassData");
  auto& editor = Find<CellEditorBox>("txtCellEditor");
  grid.SetCurrentCell(4, 2);
  grid.setFocus();
  Type("55");
  form.menuBar()->setFocus(Qt::MenuBarFocusReason);
  EXPECT_TRUE(editor.isVisible());
  Click("chkUseWeights");
  EXPECT_FALSE(editor.isVisible());
  EXPECT_EQ(grid.Text(4, 2), "55");
  grid.setFocus();
  Type("66");
  Q_EMIT grid.cellDoubleClicked();
  EXPECT_EQ(grid.Text(4, 2), "66") << "stored before the editor opens again";
  form.SelectTab(Tab::start);
  form.SelectTab(Tab::passbandData);
  EXPECT_EQ(Find<QTabWidget>("CVX_Tabs").currentWidget()->focusWidget(), &grid);
}

TEST_F(FrmMainTest, ALoneReturnInAnAnswerSurvivesShowingAndLeaving) {
  form.SetText("Note1", "a\rb");
  form.SetFocus("Note1");
  Press(Qt::Key_End);
  form.SetFocus("Gain");
  EXPECT_EQ(form.Text("Note1"), "a\rb");
}

TEST_F(FrmMainTest, ARecordTravelsThroughTheWindowUnchangedAndADemoKeepsTheFileName) {
  ResponseRecord& record = program.document.record;
  for (const Question& question : kQuestions) {
    const bool flag = question.kind == AnswerKind::flag;
    record.Slot(question.slot) = flag ? "Y" : " text µ " + std::to_string(question.slot);
  }
  record.Slot(slot::kSigmaZeroWanted) = "N";
  record.Slot(slot::kZeroCounts) = "1  3";
  record.Note1 = std::string(100000, '7');
  record.Note2 = "»";
  record.solver[8] = "1e-9";
  record.LastFileName = "before";
  program.document.RunMode = "Demo";
  ShowPoints(30);
  EXPECT_TRUE(form.IsEnabled("tmin"));
  EXPECT_FALSE(form.IsEnabled("sigmaZero")) << "and its text travels all the same";
  EXPECT_FALSE(Find<GridWidget>("PassData").isColumnHidden(3));
  const ResponseRecord shown = record;
  PutAnswers(program);
  EXPECT_EQ(program.document.DataChanged, 0);
  EXPECT_EQ(record.slots, shown.slots);
  EXPECT_EQ(record.Note1.size(), 100000U);
  EXPECT_EQ(record.Note2, "»");
  EXPECT_EQ(record.solver, shown.solver);
  EXPECT_EQ(record.passband.At(30, 4), "30.4");
  EXPECT_EQ(record.LastFileName, "before");
  program.document.RunMode = "*";
  program.files.currentFileName = "after";
  PutAnswers(program);
  EXPECT_EQ(record.LastFileName, "after");
}

TEST_F(FrmMainTest, TheSolverButtonsWorkAndFocusTheFirstBox) {
  form.SelectTab(Tab::solverSettings);
  Click("cmdUseDefSolver");
  EXPECT_EQ(FocusName(), "Remax");
  PutAnswers(program);
  EXPECT_THAT(program.document.record.solver, ::testing::Each(""));
  Click("cmdEditSolver");
  EXPECT_EQ(FocusName(), "Remax");
  PutAnswers(program);
  EXPECT_THAT(program.document.record.solver, ElementsAre("5  10  7", "0   0   0", "1e-5 1e-5 1e-5",
                                                          "100", "10", "2000", "1", "16", ".0001"));
}

TEST_F(FrmMainTest, MenuEntriesAndTheButtonGoOutAsSignalsOfTheSameName) {
  const QList<QAction*> entries =
      form.findChildren<QAction*>(QRegularExpression("^mnu(File|View|Demos|Help)"));
  EXPECT_EQ(entries.size(), 18);
  for (QAction* entry : entries) {
    const QString name = entry->objectName() == "mnuFileExit" ? "unloaded" : entry->objectName();
    const QSignalSpy spy(&form, qPrintable('2' + name + "()"));  // as SIGNAL() spells it
    entry->trigger();
    EXPECT_EQ(spy.count(), 1) << name.toStdString();
  }
  EXPECT_FALSE(form.isVisible());
  const QSignalSpy submit(&form, &MainWindow::cmdSubmit);
  Find<QPushButton>("cmdSubmit").click();
  EXPECT_EQ(submit.count(), 1);
}

TEST_F(FrmMainTest, TheRunTabAndTheTitleNameTheFile) {
  program.files.currentFileName = "Run1.TXT";
  program.files.currentFolder = "/data";
  form.SetText("LastFileName", "Run1.TXT");
  form.SelectTab(Tab::run);
  EXPECT_EQ(form.windowTitle(), "Run1.TXT - Polefit");
  EXPECT_EQ(Find<QLabel>("RunFileName").text(), "Run1.TXT");
  EXPECT_EQ(Find<QLabel>("RunFolder").text(), "/data");
  EXPECT_EQ(Find<QLabel>("RunChanges").text(), "No");
}

TEST_F(FrmMainTest, AStarInTheTitleStandsForWhatASaveWouldChange) {
  program.files.currentFileName = "vna.1";
  const auto waitFor = [this](const QString& title) {
    return QTest::qWaitFor([&] { return form.windowTitle() == title; }, 20000);
  };
  form.SetText("iPower", "3");
  EXPECT_TRUE(waitFor("vna.1* - Polefit"));
  form.SetText("iPower", "-2");
  EXPECT_TRUE(waitFor("vna.1 - Polefit")) << "as it was opened";
  form.SetText("iPower", "3");
  NoteSaved(program);
  form.ShowState();
  EXPECT_EQ(form.windowTitle(), "vna.1 - Polefit");
}

TEST_F(FrmMainTest, SizeAndPlaceAreKept) {
  form.resize(900, 640);
  form.close();
  MainWindow next;
  next.Attach(program);
  EXPECT_EQ(next.size(), QSize(900, 640));
}

}  // namespace
}  // namespace polefit::testing

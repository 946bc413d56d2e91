#include "form/ui/frm_main.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>

#include "form/solver_settings.h"
#include "form/ui/main_form.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;

class FrmMainTest : public MainForm {};

TEST_F(FrmMainTest, EveryQuestionStandsOnItsTabWithItsCaptionAndText) {
  auto& tabs = Find<QTabWidget>("CVX_Tabs");
  ASSERT_EQ(tabs.count(), 7);
  for (std::size_t tab = 0; tab < kTabCaptions.size(); ++tab) {
    EXPECT_EQ(tabs.tabText(static_cast<int>(tab)).toStdString(), kTabCaptions[tab]);
  }
  for (const Question& question : kQuestions) {
    const QWidget* page = tabs.widget(static_cast<int>(question.tab));
    auto& label = Find<QLabel>("Question" + std::to_string(question.slot));
    EXPECT_EQ(label.text().toStdString(), question.label);
    EXPECT_TRUE(page->isAncestorOf(&label));
    for (const AnswerBox& box : question.Boxes()) {
      EXPECT_TRUE(page->isAncestorOf(&Find<QWidget>(std::string(box.name)))) << box.name;
      if (question.kind == AnswerKind::flag) continue;
      EXPECT_EQ(form.Text(box.name), box.defaultText);
    }
  }
  EXPECT_EQ(Find<QLabel>("lblnZpairs").text(), "P:");
  EXPECT_EQ(Find<QLabel>("lblKeepNotes").text(), "20. » Keep notes below ...");
  EXPECT_EQ(Find<QCheckBox>("chkUseWeights").text(), "Yes");
}

TEST_F(FrmMainTest, RunsOfBlanksInTheSolverLabelsPlaceALineBreak) {
  for (std::size_t i = 0; i < kSolverQuestions.size(); ++i) {
    const std::string index = std::to_string(i + 1);
    QString text = Find<QLabel>("SolvQuestion" + index).text();
    EXPECT_EQ(text.count('\n'), i == 0 || i == 6 || i == 7 ? 1 : 0) << index;
    EXPECT_EQ(text.remove('\n').toStdString(), kSolverQuestions[i].label);
    EXPECT_EQ(Find<QLabel>("DefAnswer" + index).text().toStdString(),
              kSolverQuestions[i].defaultLabel);
  }
}

TEST_F(FrmMainTest, EveryEditAndClickMarksTheDataChanged) {
  EnableAll();
  for (const QLineEdit* box : form.findChildren<QLineEdit*>()) {
    if (box->isReadOnly() || box->objectName() == "txtCellEditor") continue;
    const std::string name = box->objectName().toStdString();
    form.SetFocus(name);
    program.DataChanged = 0;
    Type("9");
    EXPECT_EQ(program.DataChanged, 1) << name;
  }
  for (const QCheckBox* box : form.findChildren<QCheckBox*>()) {
    const std::string name = box->objectName().toStdString();
    form.SetFocus(name);
    program.DataChanged = 0;
    Press(Qt::Key_Space);
    EXPECT_EQ(program.DataChanged, 1) << name;
  }
}

TEST_F(FrmMainTest, BoxesThatSelectAllDoSoByKeyAndByMouseAndTheOthersKeepTheCaret) {
  const std::set<std::string> keepTheCaret = {
      "nPoles",   "nYzeros", "nZpairs", "nZquads", "Gain",  "LowestX_Y", "maxX_Y",
      "StepsLim", "StepOut", "EvalMax", "SetRho",  "Ratio", "Accuracy"};
  std::size_t kept = 0;
  EnableAll();
  for (QLineEdit* box : form.findChildren<QLineEdit*>()) {
    if (box->isReadOnly() || box->objectName() == "txtCellEditor") continue;
    const std::string name = box->objectName().toStdString();
    const bool selects = !keepTheCaret.contains(name);
    kept += selects ? 0 : 1;
    form.SetText(name, "12345");
    form.SetFocus(name);  // brings its tab to the front
    for (const bool byMouse : {false, true}) {
      box->clearFocus();
      box->deselect();
      if (byMouse) {
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(12, box->height() / 2));
      } else {
        box->setFocus(Qt::TabFocusReason);
      }
      EXPECT_EQ(box->selectedText(), selects ? "12345" : "") << name << " mouse " << byMouse;
    }
  }
  EXPECT_EQ(kept, keepTheCaret.size());
}

TEST_F(FrmMainTest, AFieldRuleWaitsUntilTheFocusLeaves) {
  Press(Qt::Key_Space);
  EXPECT_TRUE(form.IsChecked("chkEqualDelay"));
  EXPECT_FALSE(form.IsEnabled("tmin"));
  Press(Qt::Key_Tab);
  EXPECT_TRUE(form.IsEnabled("tmin"));
  EXPECT_TRUE(form.IsEnabled("DelRipplePower"));
  Press(Qt::Key_Backtab);
  Press(Qt::Key_Backtab);
  Press(Qt::Key_Backtab);
  EXPECT_EQ(FocusName(), "chkEqualDelay");
  Press(Qt::Key_Space);
  Press(Qt::Key_Tab);
  EXPECT_FALSE(form.IsEnabled("tmin"));
  EXPECT_EQ(FocusName(), "iPower") << "a box that is disabled passes the focus on";
  EXPECT_EQ(form.Text("tmin"), "76.7");

  form.SetFocus("nPoles");
  Press(Qt::Key_Home);
  Type("0");
  EXPECT_TRUE(form.IsEnabled("sigmaPoles"));
  QTest::mouseClick(&Find<QWidget>("poleReal"), Qt::LeftButton);
  EXPECT_FALSE(form.IsEnabled("sigmaPoles"));
}

TEST_F(FrmMainTest, ARecordTravelsThroughTheWindowUnchanged) {
  for (int number = 1; number <= slot::kMaxXY; ++number) {
    program.record.Slot(number) = "text " + std::to_string(number) + " µ";
  }
  for (const int flag : {slot::kEqualDelay, slot::kUseWeights, slot::kLossless}) {
    program.record.Slot(flag) = "Y";
  }
  for (const int flag : {slot::kSigmaZeroWanted, slot::kDoublet}) program.record.Slot(flag) = "N";
  program.record.Slot(slot::kZeroCounts) = "1  3";
  program.record.Note2 = "»";
  program.record.Note1 = std::string(100000, '7');
  program.record.solver[8] = "1e-9";
  ShowPoints(30);
  EXPECT_EQ(program.DataChanged, 0);
  EXPECT_TRUE(form.IsEnabled("tmin"));
  EXPECT_FALSE(Find<GridWidget>("PassData").isColumnHidden(3));
  const ResponseRecord shown = program.record;
  PutAnswers(program);
  PutAnswers(program);
  ResponseRecord expected = shown;
  expected.Slot(slot::kFreqPoints) = expected.Slot(slot::kDelayPointCount) = " 30";
  EXPECT_EQ(program.record.slots, expected.slots);
  EXPECT_EQ(program.record.Note1.size(), 100000U);
  EXPECT_EQ(program.record.Note2, "»");
  EXPECT_EQ(program.record.solver, expected.solver);
  EXPECT_EQ(program.record.passband.At(30, 4), "30");
}

TEST_F(FrmMainTest, TheSolverButtonsWorkAndFocusTheFirstBox) {
  form.SelectTab(Tab::solverSettings);
  const std::array<std::string, kSolverValueCount> defaults = {
      "5  10  7", "0   0   0", "1e-5 1e-5 1e-5", "100", "10", "2000", "1", "16", ".0001"};
  const std::array<std::string, kSolverValueCount> empty;
  for (const auto& [button, values] :
       {std::pair("cmdUseDefSolver", empty), {"cmdEditSolver", defaults}}) {
    QTest::mouseClick(&Find<QPushButton>(button), Qt::LeftButton);
    PutSolvAnswers(program);
    EXPECT_EQ(program.record.solver, values);
    EXPECT_EQ(FocusName(), "Remax");
  }
}

TEST_F(FrmMainTest, MenuEntriesAndButtonsGoOutAsSignals) {
  const std::pair<const char*, void (FrmMain::*)()> entries[] = {
      {"mnuFileNew", &FrmMain::mnuFileNew},       {"mnuFileOpen", &FrmMain::mnuFileOpen},
      {"mnuFileSave", &FrmMain::mnuFileSave},     {"mnuFileSaveAs", &FrmMain::mnuFileSaveAs},
      {"mnuFileDelete", &FrmMain::mnuFileDelete}, {"mnuFileSubmit", &FrmMain::mnuFileSubmit},
      {"mnuViewDemos", &FrmMain::mnuViewDemos},   {"mnuViewOutput", &FrmMain::mnuViewOutput},
      {"mnuDemosRun", &FrmMain::mnuDemosRun},     {"mnuHelpManual", &FrmMain::mnuHelpManual},
      {"mnuHelpEmail", &FrmMain::mnuHelpEmail},   {"mnuHelpAbout", &FrmMain::mnuHelpAbout},
      {"mnuFileExit", &FrmMain::unloaded}};
  for (const auto& [name, signal] : entries) {
    const QSignalSpy spy(&form, signal);
    Find<QAction>(name).trigger();
    EXPECT_EQ(spy.count(), 1) << name;
  }
  EXPECT_FALSE(form.isVisible());
  form.show();
  const QSignalSpy submit(&form, &FrmMain::cmdSubmit);
  form.SelectTab(Tab::run);
  QTest::mouseClick(&Find<QPushButton>("cmdSubmit"), Qt::LeftButton);
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

TEST_F(FrmMainTest, SizeAndPlaceAreKept) {
  form.resize(900, 640);
  form.close();
  FrmMain next;
  EXPECT_EQ(next.size(), QSize(900, 640));
}

}  // namespace
}  // namespace polefit::testing

#include "plots/ui/curves_dock.h"

#include <QMenuBar>
#include <QSignalSpy>

#include "plots/ui/curves_form.h"
#include "solver/problem/answers.h"

namespace polefit::testing {
namespace {

TEST_F(CurvesDockTest, ReadsOutThePointUnderThePointerAndSelectsItsCell) {
  dock.Pane().ChooseLower(DiagramKind::delay, true);
  QTest::qWait(20);
  struct Case {
    DiagramView& view;
    const char* readOut;
    GridView& grid;
    int column;
  };
  const Case cases[] = {
      {Upper(), "row 12: 5.5 MHz, wanted -5.85 dB", form.PassData(), 3},
      {dock.Pane().ErrorView(), "row 12: 5.5 MHz, wanted -5.85 dB", form.PassData(), 3},
      {Lower(), "row 12: 6 MHz, TX ", form.DelayData(), 2}};
  for (const Case& each : cases) {
    each.grid.SetCurrentRow(1);
    const QPoint at = each.view.PositionOf(11).toPoint();
    Hover(each.view, at);
    EXPECT_TRUE(ReadOut().startsWith(each.readOut)) << ReadOut().toStdString();
    QTest::mouseClick(&each.view, Qt::LeftButton, {}, at);
    EXPECT_EQ(each.grid.CurrentRow(), 12);
    EXPECT_EQ(each.grid.CurrentColumn(), each.column) << "what is wanted";
  }
  Find<QWidget>("PassData").setFocus();
  form.PassData().SetCurrentRow(6);
  EXPECT_EQ(Upper().Marked(), 5U) << "the current cell is ringed";
  Upper().setFocus();
  Press(Qt::Key_Right);
  EXPECT_EQ(Upper().Marked(), 6U);
  Lower().setFocus();
  EXPECT_EQ(Upper().Marked(), 5U) << "again";
}

TEST_F(CurvesDockTest, LeadsFromDiagramToDiagramByTab) {
  Find<QAction>("mnuViewCurves").trigger();
  std::vector<std::string> reached;
  for (int i = 0; i < 4; ++i) {
    reached.push_back(FocusName());
    Press(Qt::Key_Tab);
  }
  EXPECT_EQ(reached, (std::vector<std::string>{"DiagramUpper", "DiagramError", "DiagramLower",
                                               "optDecibels"}));
  Find<QAction>("mnuViewCurves").trigger();
  EXPECT_FALSE(dock.Pane().isAncestorOf(QApplication::focusWidget())) << "back to the form";
}

TEST_F(CurvesDockTest, HidesCurvesByTheLegendAndBySpace) {
  dock.Live().ShowResult(ExampleRecord("Ex-Delay.101", "8=.23 .3 .34; 9=.95 .67 .3"), "19:40");
  QTRY_COMPARE(State(), QString("result 19:40"));
  const auto hidden = [this] { return dock.Pane().Choices().hidden; };
  using Names = std::vector<std::string>;
  Upper().replot();
  for (const Names& expected : {Names{"typed"}, {}}) {
    for (int i = 0; i < Upper().legend->itemCount(); ++i) {
      auto* entry = qobject_cast<QCPPlottableLegendItem*>(Upper().legend->item(i));
      if (!entry->plottable()->name().startsWith("typed")) continue;
      QTest::mouseClick(&Upper(), Qt::LeftButton, {}, entry->outerRect().center());
      break;
    }
    EXPECT_EQ(hidden(), expected);
    Upper().replot();
  }
  Upper().setFocus();
  for (const Names& expected : {Names{"result 19:40"}, {"typed"}, {}}) {
    Press(Qt::Key_Space);
    EXPECT_EQ(hidden(), expected);
  }
}

TEST_F(CurvesDockTest, StepsZoomsAndPansByKeys) {
  Upper().setFocus();
  Upper().Mark(std::nullopt);
  Press(Qt::Key_Right, Qt::Key_Right);
  EXPECT_TRUE(ReadOut().startsWith("row 2: ")) << ReadOut().toStdString();
  Press(Qt::SHIFT | Qt::Key_Right, Qt::Key_Left);
  EXPECT_TRUE(ReadOut().startsWith("row 11: ")) << ReadOut().toStdString();
  const QCPRange whole = Upper().xAxis->range();
  Press(Qt::Key_Plus);
  EXPECT_LT(Upper().xAxis->range().size(), whole.size());
  EXPECT_EQ(dock.Pane().ErrorView().xAxis->range(), Upper().xAxis->range()) << "move together";
  Press(Qt::CTRL | Qt::Key_Right);
  EXPECT_GT(Upper().xAxis->range().center(), whole.center());
  Press(Qt::Key_Home);
  EXPECT_EQ(Upper().xAxis->range(), whole);
  Press(Qt::Key_Return);
  EXPECT_FALSE(Lower().isVisible());
  Press(Qt::Key_Escape);
  EXPECT_TRUE(Lower().isVisible());
}

TEST_F(CurvesDockTest, SaysOfTheFocusedDiagramWhatIsReadOut) {
  Click("optPhase");
  Lower().setFocus();
  QApplication::processEvents();
  EXPECT_TRUE(ReadOut().startsWith("row 1: 0 MHz, typed 0 degrees")) << ReadOut().toStdString();
  Press(Qt::SHIFT | Qt::Key_Right);
  EXPECT_TRUE(ReadOut().startsWith("row 11: 5 MHz, typed ")) << ReadOut().toStdString();
  EXPECT_EQ(Lower().accessibleName(), ReadOut());
  dock.Live().Update();
  EXPECT_EQ(Lower().accessibleName(), ReadOut());
  EXPECT_EQ(Lower().accessibleDescription(), "phase of H, 7 poles, 3 zeros");
  Click("optStep");
  Lower().setFocus();
  QApplication::processEvents();
  EXPECT_TRUE(ReadOut().startsWith("step response, ends at 1")) << ReadOut().toStdString();
  Press(Qt::Key_Right);
  EXPECT_TRUE(ReadOut().startsWith("0 ns, typed 0")) << ReadOut().toStdString();
  QTest::mouseClick(&Lower(), Qt::LeftButton, {}, Lower().PositionOf(9).toPoint());
  EXPECT_EQ(form.PassData().CurrentRow(), 1) << "no row belongs to a moment";
}

TEST_F(CurvesDockTest, KeepsItsFrequencyDiagramsTogether) {
  Upper().setFocus();
  Press(Qt::Key_Plus, Qt::Key_Plus);
  const QCPRange zoomed = Upper().xAxis->range();
  const QCPRange up = dock.Pane().ErrorView().yAxis->range();
  for (const char* const choice : {"optPhase", "optLinear", "optDelay"}) {
    Click(choice);
    for (DiagramView* view : {&Upper(), &dock.Pane().ErrorView(), &Lower()}) {
      EXPECT_EQ(view->xAxis->range(), zoomed) << choice;
    }
  }
  EXPECT_NE(dock.Pane().ErrorView().yAxis->range(), up) << "in parts of Ymax, no longer in dB";
  Upper().setFocus();
  Press(Qt::Key_Home, Qt::Key_Return);
  EXPECT_FALSE(Lower().isVisible());
  Click("optPoles");
  EXPECT_TRUE(Lower().isVisible()) << "which was asked for";
}

TEST_F(CurvesDockTest, BearsWhateverIsTyped) {
  Find<QAction>("mnuFitPreview").setChecked(true);
  struct Case {
    int rows;
    const char* frequency;
    const char* yout;
    const char* state;
  };
  const char* const kTyped = "typed values|preview";
  const char* const kFaulty = "last good curve; see findings";
  const Case cases[] = {{0, "", "", "typed values, no points yet: H alone"},
                        {1, "", "", kTyped},
                        {2, "", "", kTyped},
                        {2, "", "1e-30", kTyped},
                        {21, "", "0", kFaulty},
                        {21, "2", "", kTyped},
                        {21, "inf", "", kFaulty},
                        {21, "nan", "", kFaulty},
                        {21, "", "-inf", kFaulty}};
  for (const Case& each : cases) {
    SCOPED_TRACE(std::to_string(each.rows) + " rows, " + each.frequency + ", " + each.yout);
    Open("Ex-Zpair.1");
    ResponseRecord record = ExampleRecord("Ex-Zpair.1");
    record.Slot(slot::kFreqPointCount) = std::to_string(each.rows);
    for (int row = 1; row <= each.rows; ++row) {
      if (each.frequency[0] != '\0') record.passband.At(row, 1) = each.frequency;
      if (each.yout[0] != '\0') record.passband.At(row, 3) = each.yout;
    }
    Open(record);
    EXPECT_THAT(State().toStdString(), ::testing::MatchesRegex(each.state));
    for (const char* const lower : {"optDelay", "optPhase", "optStep", "optPoles"}) {
      Click(lower);
      dock.Pane().SetLogFrequency(!dock.Pane().Choices().isLogFrequency);
      for (DiagramView* view : {&Upper(), &Lower()}) {
        EXPECT_GT(view->xAxis->range().size(), 0);
        EXPECT_GT(view->yAxis->range().size(), 0);
        view->setFocus();
        Press(Qt::Key_Right, Qt::Key_Plus, Qt::Key_Home, Qt::Key_Return, Qt::Key_Return);
        view->replot();
      }
    }
  }
}

TEST_F(CurvesDockTest, SaysWhatItsCurvesBelongTo) {
  EXPECT_EQ(State(), "typed values");
  EXPECT_EQ(dock.Pane().accessibleName(), "Curves, typed values: " + Upper().accessibleName());
  EXPECT_EQ(ReadOut(), Upper().accessibleName());
  EXPECT_EQ(program.document.DataChanged, 0) << "reading the form changes nothing";
  form.SetText("poleReal", ".5 .4 x");
  EXPECT_EQ(State(), "typed values") << "a moment after the last key";
  QTRY_COMPARE(State(), QString("last good curve; see findings"));
  form.SetText("poleReal", ".5 .4 .3");
  QTRY_COMPARE(State(), QString("typed values"));
  dock.Live().ShowResult(ExampleRecord("Ex-Delay.101", "8=.23 .3 .34; 9=.95 .67 .3"), "19:40");
  QTRY_COMPARE(State(), QString("result 19:40"));
  form.SetText("freqNorm", "11");
  QTRY_COMPARE(State(), QString("result 19:40, form changed since"));
}

TEST_F(CurvesDockTest, ShowsAPreviewTakesItAndClosesWhileOneRuns) {
  QSignalSpy shown(&dock.Live(), &LiveCurves::previewShown);
  Find<QAction>("mnuFitPreview").setChecked(true);
  ASSERT_TRUE(shown.wait(20000));
  EXPECT_EQ(State(), "preview");
  const std::string typed = form.Text("poleReal");
  Click("cmdTakePreview");
  EXPECT_NE(form.Text("poleReal"), typed);
  EXPECT_EQ(Find<QAction>("mnuEditUndo").text(), "&Undo Take Preview");
  form.SetText("freqNorm", "12");
  dock.Live().Update();  // and away while it is being solved
}

TEST_F(CurvesDockTest, ShowsAFreshResultRatherThanAPreview) {
  QSignalSpy shown(&dock.Live(), &LiveCurves::previewShown);
  Find<QAction>("mnuFitPreview").setChecked(true);
  ASSERT_TRUE(shown.wait(20000));
  dock.Live().ShowResult(ExampleRecord("Ex-Delay.101", "8=.23 .3 .34; 9=.95 .67 .3"), "19:40");
  QTRY_COMPARE(State(), QString("result 19:40"));
  EXPECT_FALSE(shown.wait(300));
  form.SetText("freqNorm", "11");
  ASSERT_TRUE(shown.wait(20000));
  EXPECT_EQ(State(), "preview") << "in the place of the pale result";
}

TEST_F(CurvesDockTest, KeepsTheGivenMenusInTheirOrder) {
  QStringList captions;
  for (const QAction* action : form.menuBar()->actions()) captions << action->text();
  EXPECT_EQ(captions.first(), "&File");
  EXPECT_EQ(captions.indexOf("F&it"), captions.indexOf("&View") + 1);
  EXPECT_EQ(captions.indexOf("&Demos"), captions.indexOf("F&it") + 1);
}

TEST_F(CurvesDockTest, SuggestsStartValuesAndOffersToReplaceTypedOnes) {
  form.SetText("poleReal", "");
  Find<QAction>("mnuFitSuggest").trigger();
  EXPECT_EQ(Words(form.Text("poleReal")).size(), 3U);
  EXPECT_TRUE(program.notices.Waiting().empty());
  Find<QAction>("mnuEditUndo").trigger();
  EXPECT_EQ(form.Text("poleReal"), "") << "one step";
  form.SetText("poleReal", ".9 .9 .9");
  Find<QAction>("mnuFitSuggest").trigger();
  EXPECT_EQ(form.Text("poleReal"), ".9 .9 .9");
  ASSERT_EQ(program.notices.Waiting().size(), 1U);
  program.notices.Waiting().front().buttons.front().action();
  EXPECT_NE(form.Text("poleReal"), ".9 .9 .9");
  Find<QAction>("mnuFitSuggest").trigger();
  EXPECT_EQ(program.notices.Waiting().size(), 1U);
  form.SetText("poleReal", "");
  Find<QAction>("mnuFitSuggest").trigger();
  EXPECT_TRUE(program.notices.Waiting().empty()) << "one was missing";
  form.SetText("freqNorm", "x");
  form.SetText("poleReal", "");
  Find<QAction>("mnuFitSuggest").trigger();
  EXPECT_TRUE(ReadOut().contains("findings")) << ReadOut().toStdString();
}

TEST_F(CurvesDockTest, ReadsOutNoCurveThatIsGone) {
  const auto readOut = [this] {
    Hover(Upper(), Upper().PositionOf(3).toPoint());
    return ReadOut();
  };
  dock.Live().ShowOthers({{"a run", ExampleRecord("Ex-Delay.101", "8=.9 .9 .9")}});
  EXPECT_TRUE(readOut().contains("a run"));
  dock.Live().ShowOthers({});
  EXPECT_FALSE(readOut().contains("a run")) << "at once";
  QMenu& menu = Find<QMenu>("mnuFit");
  for (const bool isSeen : {false, true}) {
    dock.setVisible(isSeen);
    QApplication::processEvents();
    EXPECT_EQ(ReadOut().isEmpty(), !isSeen);
    Q_EMIT menu.aboutToShow();
    EXPECT_EQ(Find<QAction>("mnuFitCopyData").isEnabled(), isSeen) << "what is not drawn";
  }
  host.KeepUserSetting("curves", "");
  CurvesDock fresh(form, program);
  fresh.show();
  fresh.Live().Update();
  QSignalSpy shown(&fresh.Live(), &LiveCurves::previewShown);
  fresh.Live().SetPreview(true);
  ASSERT_TRUE(shown.wait(20000));
  form.SetChecked("chkEqualDelay", false);  // the preview goes, and another diagram comes
  fresh.Live().Update();
  EXPECT_EQ(fresh.Pane().Lower(), DiagramKind::poles);
  EXPECT_EQ(fresh.Live().State(), PaneState::typed);
}

TEST_F(CurvesDockTest, ReadsOutAllAgainWhenNoDiagramIsLookedAt) {
  const QString sentence = Upper().accessibleName();
  Find<QWidget>("optPhase").setFocus();
  for (DiagramView* view : {&Upper(), &Lower()}) {
    view->setFocus();
    Press(Qt::Key_Right);
    EXPECT_NE(ReadOut(), sentence);
    Find<QWidget>("optPhase").setFocus();
    EXPECT_EQ(ReadOut(), sentence);
  }
  Upper().setFocus();
  form.SetFocus("nPoles");
  QApplication::processEvents();
  EXPECT_EQ(ReadOut(), sentence) << "of one that the focus only passes";
}

}  // namespace
}  // namespace polefit::testing

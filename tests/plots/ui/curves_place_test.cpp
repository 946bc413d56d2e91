// Where the pane of curves stands, what it has room for, and what it remembers of that.

#include "plots/ui/curves_form.h"

namespace polefit::testing {
namespace {

using CurvesPlace = CurvesDockTest;

TEST_F(CurvesPlace, IsAWindowOfItsOwnBesideANarrowOne) {
  form.resize(1000, 700);
  QApplication::processEvents();
  EXPECT_FALSE(dock.isFloating());
  EXPECT_GE(form.width() - dock.width(), 560) << "the tabs keep their least width";
  EXPECT_GE(dock.width(), 340);
  form.resize(860, 700);
  QApplication::processEvents();
  EXPECT_TRUE(dock.isFloating());
  EXPECT_FALSE(dock.isVisible()) << "until it is called for";
  Find<QAction>("mnuViewCurves").trigger();
  EXPECT_TRUE(dock.isVisible());
  EXPECT_GT(dock.width(), 25 * form.fontMetrics().height())
      << "as much as the diagrams have to say";
  form.resize(1200, 700);
  QApplication::processEvents();
  EXPECT_FALSE(dock.isFloating());
  EXPECT_TRUE(dock.isVisible());
}

TEST_F(CurvesPlace, ComesBackToItsWidthInAWideWindow) {
  const int wanted = dock.width();
  for (const int narrow : {1000, 860}) {
    form.resize(narrow, 700);
    QApplication::processEvents();
    form.resize(1400, 800);
    QTRY_COMPARE(dock.width(), wanted);
  }
  EXPECT_NEAR(wanted, 1400 * .44, 2);
  form.resize(1000, 700);
  QApplication::processEvents();
  Find<QAction>("actHideCurves").trigger();
  EXPECT_EQ(ReadChoices(host).width, wanted) << "what the window had no room for is no choice";
}

TEST_F(CurvesPlace, FloatsWhereItWasPutAndGoesWithTheForm) {
  dock.setFloating(true);
  dock.resize(500, 600);
  EXPECT_GT(dock.Pane().maximumWidth(), 2000) << "no tabs beside it";
  form.resize(860, 700);
  QApplication::processEvents();
  EXPECT_TRUE(dock.isVisible()) << "it takes no room from the tabs";
  form.resize(1200, 700);
  QApplication::processEvents();
  EXPECT_TRUE(dock.isFloating() && dock.isVisible());
  form.hide();
  EXPECT_FALSE(dock.isVisible());
  CurvesDock next(form, program);
  EXPECT_FALSE(next.isVisible());
  form.show();
  QApplication::processEvents();
  for (const CurvesDock* each : {&std::as_const(dock), &std::as_const(next)}) {
    EXPECT_TRUE(each->isVisible() && each->isFloating());
    EXPECT_EQ(each->size(), QSize(500, 600));
  }
}

TEST_F(CurvesPlace, ChoosesTheDelayByItselfUntilTheUserChooses) {
  host.KeepUserSetting("curves", "");
  CurvesDock fresh(form, program);
  fresh.show();
  fresh.Live().Update();
  EXPECT_EQ(fresh.Pane().Lower(), DiagramKind::delay) << "question 1 is ticked";
  form.SetChecked("chkEqualDelay", false);
  fresh.Live().Update();
  EXPECT_EQ(fresh.Pane().Lower(), DiagramKind::poles);
  fresh.Pane().ChooseLower(DiagramKind::step, true);
  form.SetChecked("chkEqualDelay", true);
  fresh.Live().Update();
  EXPECT_EQ(fresh.Pane().Lower(), DiagramKind::step);
}

TEST_F(CurvesPlace, RemembersWhatWasChosen) {
  dock.Pane().ChooseLinear(true);
  dock.Pane().ChooseLower(DiagramKind::step, true);
  dock.Pane().SetLogFrequency(true);
  form.addDockWidget(Qt::LeftDockWidgetArea, &dock);
  Find<QAction>("actHideCurves").trigger();
  CurvesDock next(form, program);
  EXPECT_EQ(form.dockWidgetArea(&next), Qt::LeftDockWidgetArea);
  EXPECT_FALSE(next.isVisible());
  auto* pane = next.findChild<CurvesPane*>("CurvesPane");
  EXPECT_TRUE(pane->Choices().isLinear);
  EXPECT_TRUE(pane->Choices().isLogFrequency);
  EXPECT_EQ(pane->Lower(), DiagramKind::step);
}

TEST_F(CurvesPlace, DrawsWhatThereIsInEachRoom) {
  const auto seen = [&] {
    QApplication::processEvents();
    return std::array{Upper().isVisible(), dock.Pane().ErrorView().isVisible(),
                      Lower().isVisible()};
  };
  EXPECT_EQ(seen(), (std::array{true, true, true}));
  dock.Pane().setFixedHeight(450);
  EXPECT_EQ(seen(), (std::array{true, true, false}));
  Click("optPhase");
  EXPECT_EQ(seen(), (std::array{false, false, true}));
  EXPECT_EQ(Lower().Shown().kind, DiagramKind::phase);
  EXPECT_TRUE(ReadChoices(host).prefersLower);
  Click("optLinear");
  EXPECT_FALSE(ReadChoices(host).prefersLower);
  EXPECT_EQ(seen(), (std::array{true, true, false}));
  dock.Pane().setFixedHeight(300);
  EXPECT_EQ(seen(), (std::array{true, false, false}));
}

TEST_F(CurvesPlace, SaysItsStateWholeInANarrowPane) {
  auto& state = Find<QLabel>("CurvesState");
  state.setText("result 19:40, form changed since, 2 of 3 ticked runs");
  dock.Pane().setFixedWidth(340);
  QApplication::processEvents();
  EXPECT_GE(state.height(), state.heightForWidth(state.width()));
  EXPECT_GT(state.heightForWidth(state.width()), state.fontMetrics().lineSpacing());
}

}  // namespace
}  // namespace polefit::testing

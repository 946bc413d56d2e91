#include "plots/ui/curves_dock.h"

#include <QAction>
#include <QLabel>
#include <QMenuBar>
#include <QSignalSpy>
#include <QWheelEvent>

#include "form/ui/main_form.h"
#include "plots/ui/curves_menu.h"
#include "plots/ui/curves_pane.h"
#include "plots/ui/diagram_view.h"
#include "plots/ui/picture_files.h"
#include "plots/ui/plot_page.h"
#include "solver/example_problem.h"

namespace polefit::testing {
namespace {

/// The real main form with the dock beside it, showing an example.
class CurvesDockTest : public MainForm {
 protected:
  CurvesDockTest() : dock(*new CurvesDock(form, program)) {
    AddCurvesMenu(form, dock);
    form.resize(1400, 800);
    Open("Ex-Delay.101");
    dock.Pane().ChooseLower(DiagramKind::poles, true);
    QTest::qWait(20);
  }

  void Open(const std::string& name) {
    program.document.record = ExampleRecord(name);
    GetAnswers(program);
    dock.show();
    QApplication::processEvents();
    dock.Live().Update();
    QApplication::processEvents();
  }

  QString ReadOut() { return Find<QLabel>("lblReadOut").text(); }
  QString State() { return Find<QLabel>("CurvesState").text(); }
  DiagramView& Upper() { return dock.Pane().UpperView(); }
  DiagramView& Lower() { return dock.Pane().LowerView(); }

  /// A move with a button down, which the test library does not send.
  static void Drag(QWidget& view, const QPoint& to) {
    QMouseEvent move(QEvent::MouseMove, to, view.mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(&view, &move);
  }

  CurvesDock& dock;
};

TEST_F(CurvesDockTest, ReadsOutTheCircleUnderThePointerAndSelectsItsCell) {
  const QPoint at = Upper().PositionOf(11).toPoint();
  QMouseEvent hover(QEvent::MouseMove, at, Upper().mapToGlobal(at), Qt::NoButton, {}, {});
  QApplication::sendEvent(&Upper(), &hover);
  EXPECT_TRUE(ReadOut().startsWith("row 12: 5.5 MHz, wanted -5.85 dB")) << ReadOut().toStdString();
  QTest::mouseClick(&Upper(), Qt::LeftButton, {}, at);
  EXPECT_EQ(form.PassData().CurrentRow(), 12);
  Find<QWidget>("PassData").setFocus();
  form.PassData().SetCurrentRow(6);
  EXPECT_EQ(Upper().Marked(), 5U) << "the current cell is ringed";
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

TEST_F(CurvesDockTest, ZoomsByWheelAndBox) {
  const QCPRange whole = Upper().xAxis->range();
  const QPoint from = Upper().PositionOf(4).toPoint() + QPoint(0, 40);
  const QPoint to = from + QPoint(80, 40);
  QTest::mousePress(&Upper(), Qt::LeftButton, {}, from);
  const double left = Upper().xAxis->pixelToCoord(from.x());
  Drag(Upper(), to);
  QTest::mouseRelease(&Upper(), Qt::LeftButton, {}, to);
  EXPECT_NEAR(Upper().xAxis->range().lower, left, 1e-9);
  EXPECT_LT(Upper().xAxis->range().size(), whole.size() / 2);
  Upper().FitView();
  QWheelEvent wheel(from, Upper().mapToGlobal(from), {}, {0, 120}, Qt::NoButton, {},
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&Upper(), &wheel);
  EXPECT_LT(Upper().xAxis->range().size(), whole.size());
}

TEST_F(CurvesDockTest, MovesAPoleByMouseAndKeysAndGivesItBackOnEscape) {
  const std::string real = form.Text("poleReal");
  const QPoint at = Lower().PositionOf(1).toPoint();
  QTest::mousePress(&Lower(), Qt::LeftButton, {}, at);
  Drag(Lower(), at + QPoint(-20, -10));
  EXPECT_GT(std::stod(form.Text("poleReal").substr(3)), .4) << form.Text("poleReal");
  EXPECT_NE(form.Text("poleImag"), ".3 .7 1.1");
  Lower().setFocus();
  Press(Qt::Key_Escape);
  EXPECT_EQ(form.Text("poleReal"), real);
  QTest::mouseRelease(&Lower(), Qt::LeftButton, {}, at);
  Lower().Mark(1);
  Press(Qt::CTRL | Qt::SHIFT | Qt::Key_Up);
  EXPECT_EQ(form.Text("poleReal"), real);
  EXPECT_EQ(form.Text("poleImag"), ".3 .7081 1.1");
}

TEST_F(CurvesDockTest, PutsTheFocusOnTheNumberOfAClickedPole) {
  QTest::mouseClick(&Lower(), Qt::LeftButton, {}, Lower().PositionOf(2).toPoint());
  auto& box = Find<QLineEdit>("poleReal");
  EXPECT_TRUE(box.hasFocus());
  EXPECT_EQ(box.selectedText(), ".3");
}

TEST_F(CurvesDockTest, SaysWhatItsCurvesBelongTo) {
  EXPECT_EQ(State(), "typed values");
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
  dock.Live().TakePreview();
  EXPECT_NE(form.Text("poleReal"), typed);
  form.SetText("freqNorm", "12");
  dock.Live().Update();  // and away while it is being solved
}

TEST_F(CurvesDockTest, KeepsTheGivenMenusInTheirOrder) {
  QStringList captions;
  for (const QAction* action : form.menuBar()->actions()) captions << action->text();
  EXPECT_EQ(captions.first(), "&File");
  EXPECT_EQ(captions.indexOf("F&it"), captions.indexOf("&View") + 1);
  EXPECT_EQ(captions.indexOf("&Demos"), captions.indexOf("F&it") + 1);
  Find<QAction>("mnuViewCurves").trigger();
  EXPECT_TRUE(dock.Pane().isAncestorOf(QApplication::focusWidget()));
  Find<QAction>("actHideCurves").trigger();
  EXPECT_FALSE(dock.isVisible());
}

TEST_F(CurvesDockTest, MakesPicturesOfEveryKind) {
  for (const auto& [name, start] :
       {std::pair("a.png", "\x89PNG"), {"a.svg", "<?xml"}, {"a.pdf", "%PDF"}}) {
    EXPECT_TRUE(PictureOf(dock.Pane(), name).startsWith(start)) << name;
  }
  std::vector<Finding> findings;
  const auto curves = CurvesOf(ExampleRecord("Ex-Zpair.1"), CurveRole::typed, "typed", findings);
  const QImage page = QImage::fromData(PlotPage(*curves, "Ex-Zpair.1", "x.png"));
  EXPECT_EQ(page.size(), QSize(1600, 2000));
  EXPECT_EQ(page.pixelColor(2, 2), QColor(Qt::white));
}

}  // namespace
}  // namespace polefit::testing

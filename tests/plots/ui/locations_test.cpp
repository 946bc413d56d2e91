// Poles and zeros by mouse and keys: each is moved, added, removed, told of.

#include "plots/ui/curves_form.h"
#include "solver/problem/answers.h"

namespace polefit::testing {
namespace {

using LocationsTest = CurvesDockTest;

TEST_F(LocationsTest, PutsTheFocusOnTheNumberOfAClickedPole) {
  QTest::mouseClick(&Lower(), Qt::LeftButton, {}, Lower().PositionOf(2).toPoint());
  auto& box = Find<QLineEdit>("poleReal");
  EXPECT_TRUE(box.hasFocus());
  EXPECT_EQ(box.selectedText(), ".3");
}

TEST_F(LocationsTest, AreLeftForTheBoxThatTheFocusCameFrom) {
  form.SetFocus("poleImag");
  Find<QLineEdit>("poleImag").setCursorPosition(2);
  Find<QAction>("mnuViewCurves").trigger();
  EXPECT_TRUE(Upper().hasFocus());
  Find<QAction>("mnuViewCurves").trigger();
  EXPECT_EQ(FocusName(), "poleImag");
  EXPECT_FALSE(Find<QLineEdit>("poleImag").hasSelectedText()) << "it goes on where it was";
  form.SetFocus("PassData");
  Type("1");
  for (int i = 0; i < 2; ++i) Find<QAction>("mnuViewCurves").trigger();
  EXPECT_EQ(FocusName(), "PassData") << "the table of an editor that is closed";
}

TEST_F(LocationsTest, MovesAPoleByMouseAndKeysAndGivesItBackOnEscape) {
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

TEST_F(LocationsTest, MovesTheZeroThatWasTakenPastAnother) {
  Open("Ex-Yzero.101", "11=2 0 0; 11a=1.5 1.3; 14=3");
  const auto& stops = Lower().Shown().stops;
  const auto low = std::find_if(stops.begin(), stops.end(),
                                [](const Stop& stop) { return stop.x == 0 && stop.y == 1.3; });
  ASSERT_NE(low, stops.end());
  const QPoint at = Lower().PositionOf(static_cast<std::size_t>(low - stops.begin())).toPoint();
  const double perPixel = Lower().yAxis->range().size() / Lower().axisRect()->height();
  QTest::mousePress(&Lower(), Qt::LeftButton, {}, at);
  const int way = static_cast<int>(.4 / perPixel);
  for (int i = 1; i <= 4; ++i) Drag(Lower(), at - QPoint(0, i * way / 4));
  QTest::mouseRelease(&Lower(), Qt::LeftButton, {}, at - QPoint(0, way));
  EXPECT_TRUE(form.Text("Yzero").starts_with("1.5 1.")) << form.Text("Yzero");
  EXPECT_NEAR(std::stod(form.Text("Yzero").substr(4)), 1.7, 3 * perPixel);
  Lower().setFocus();
  Press(Qt::CTRL | Qt::SHIFT | Qt::Key_Up);
  EXPECT_TRUE(form.Text("Yzero").starts_with("1.5 1.7")) << "the ring goes with it";
}

TEST_F(LocationsTest, MovesTheTypedOneUnderAResultAndByItsImage) {
  Open("Ex-Zpair.1", "11=0 0 1; 11b=.3; 11c=1.2");
  dock.Live().ShowResult(ExampleRecord("Ex-Zpair.1", "11=0 0 1; 11b=.3; 11c=1.2"), "19:40");
  QTRY_COMPARE(State(), QString("result 19:40"));
  const auto& stops = Lower().Shown().stops;
  const auto image = std::ranges::find_if(
      stops, [](const Stop& stop) { return stop.curve == 0 && stop.isMirror; });
  ASSERT_NE(image, stops.end());
  EXPECT_EQ(image->x, .3);
  const QPoint at = Lower().PositionOf(static_cast<std::size_t>(image - stops.begin())).toPoint();
  QTest::mousePress(&Lower(), Qt::LeftButton, {}, at);
  Drag(Lower(), at + QPoint(20, 0));
  QTest::mouseRelease(&Lower(), Qt::LeftButton, {}, at + QPoint(20, 0));
  const double real = std::stod(form.Text(BoxName(slot::kZreal)));
  EXPECT_GT(real, .31) << "away from the axis on both sides";
  Lower().setFocus();
  Press(Qt::CTRL | Qt::SHIFT | Qt::Key_Right, Qt::CTRL | Qt::SHIFT | Qt::Key_Right);
  EXPECT_GT(std::stod(form.Text(BoxName(slot::kZreal))), real + .01) << "the ring stays with it";
}

TEST_F(LocationsTest, MovesAPoleInOneStepOfUndo) {
  const std::string real = form.Text("poleReal");
  const QPoint at = Lower().PositionOf(1).toPoint();
  QTest::mousePress(&Lower(), Qt::LeftButton, {}, at);
  for (int i = 5; i <= 20; i += 5) Drag(Lower(), at + QPoint(-i, -i));
  QTest::mouseRelease(&Lower(), Qt::LeftButton, {}, at + QPoint(-20, -20));
  EXPECT_NE(form.Text("poleReal"), real);
  EXPECT_EQ(Find<QAction>("mnuEditUndo").text(), "&Undo Move");
  Find<QAction>("mnuEditUndo").trigger();
  EXPECT_EQ(form.Text("poleReal"), real);
  EXPECT_EQ(form.Text("poleImag"), ".3 .7 1.1");
  EXPECT_EQ(Find<QAction>("mnuEditUndo").text(), "&Undo") << "one step";
}

TEST_F(LocationsTest, DragsATenthOfTheWayWithShift) {
  const QPoint at = Lower().PositionOf(1).toPoint();
  const double perPixel = Lower().xAxis->range().size() / Lower().axisRect()->width();
  QTest::mousePress(&Lower(), Qt::LeftButton, {}, at);
  QMouseEvent move(QEvent::MouseMove, at + QPoint(-50, 0), Lower().mapToGlobal(at), Qt::NoButton,
                   Qt::LeftButton, Qt::ShiftModifier);
  QApplication::sendEvent(&Lower(), &move);
  const double moved = std::stod(form.Text("poleReal").substr(3));
  EXPECT_NEAR(moved, .4 + 5 * perPixel, 1.5 * perPixel);
  QTest::mouseRelease(&Lower(), Qt::LeftButton, Qt::ShiftModifier, at + QPoint(-50, 0));
}

TEST_F(LocationsTest, AddsAndRemovesLocationsInOneStep) {
  const auto choose = [&](const char* entry, const QPoint& at) {
    Q_EMIT Lower().customContextMenuRequested(at);
    auto* action = Lower().findChild<QAction*>(entry);
    ASSERT_NE(action, nullptr) << entry;
    action->trigger();
    delete Lower().findChild<QWidget*>("mnuDiagram");
  };
  const QPoint ground = Lower().PositionOf(0).toPoint() + QPoint(-30, 0);
  const QPointF place = Lower().ValuesAt(ground);
  choose("actAddPolePair", ground);
  EXPECT_EQ(form.Text("nPoles"), "0 4");
  EXPECT_NEAR(std::stod(form.Text("poleReal").substr(9)), -place.x(), 1e-3);
  EXPECT_NEAR(std::stod(form.Text("poleImag").substr(10)), place.y(), 1e-3);
  choose("actAddZeroPair", ground);
  EXPECT_EQ(form.Text("nZpairs"), "1");
  EXPECT_TRUE(form.IsEnabled(BoxName(slot::kZreal))) << "the boxes that are needed wake up";
  choose("actRemoveLocation", Lower().PositionOf(1).toPoint());
  EXPECT_EQ(form.Text("nPoles"), "0 3");
  EXPECT_TRUE(form.Text("poleReal").starts_with(".5 .3 ")) << form.Text("poleReal");
  for (int i = 0; i < 3; ++i) Find<QAction>("mnuEditUndo").trigger();
  EXPECT_EQ(form.Text("nPoles"), "0 3");
  EXPECT_EQ(form.Text("poleReal"), ".5 .4 .3");
  EXPECT_EQ(form.Text("nZpairs"), "0");
}

TEST_F(LocationsTest, HaveAMenuByAKeyWhereTheRingIs) {
  Lower().setFocus();
  Lower().Mark(1);
  const QPoint middle = Lower().rect().center();
  QContextMenuEvent key(QContextMenuEvent::Keyboard, middle, Lower().mapToGlobal(middle));
  QApplication::sendEvent(&Lower(), &key);
  auto* action = Lower().findChild<QAction*>("actRemoveLocation");
  ASSERT_NE(action, nullptr);
  EXPECT_EQ(action->text(), "Remove pair 2");
  delete Lower().findChild<QWidget*>("mnuDiagram");
}

TEST_F(LocationsTest, TellsOfEachPairInBoxesEightAndNine) {
  for (const char* const name : {"poleReal", "poleImag"}) {
    EXPECT_TRUE(Find<QLineEdit>(name).toolTip().contains("pair 2: -0.4 + j0.7, 8.062 MHz, Q 1.01"))
        << name;
  }
  form.SetText("poleReal", "x");
  dock.Live().Update();
  EXPECT_FALSE(Find<QLineEdit>("poleReal").toolTip().contains("pair 2"));
}

}  // namespace
}  // namespace polefit::testing

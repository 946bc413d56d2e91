// What stands where in each diagram, in pixels, and what mouse and keys do to it.

#include "plots/ui/diagram_view.h"

#include <QNativeGestureEvent>
#include <QPointingDevice>
#include <QSignalSpy>
#include <QWheelEvent>

#include "plots/diagram_parts.h"
#include "plots/ui/curve_style.h"
#include "plots/ui/curves_form.h"
#include "widgets/controls.h"

namespace polefit::testing {
namespace {

/// Every kind of diagram alone in a window, of a typed set and a result.
class DiagramViewTest : public ::testing::Test {
 protected:
  DiagramViewTest() {
    std::vector<Finding> findings;
    typed = *CurvesOf(ExampleRecord("Ex-Delay.101"), CurveRole::typed, "typed", findings);
    result = *CurvesOf(ExampleRecord("Ex-Delay.101", "8=.23 .3 .34; 9=.95 .67 .3; 10a=.6"),
                       CurveRole::result, "result 19:40", findings);
    view.resize(600, 400);
    view.SetLegend(true);
    view.show();
  }

  void Show(DiagramKind kind) {
    diagram = MakeDiagram(kind, {&typed, &result}, choices);
    view.Show(diagram);
    view.replot();
    image = view.grab().toImage();
  }

  /// Where the axes put a value, reckoned from their ends.
  QPoint Pixel(double x, double y) const {
    const QRect room = view.axisRect()->rect();
    const QCPRange across = view.xAxis->range();
    const QCPRange up = view.yAxis->range();
    const auto at = [](double value, const QCPRange& range) {
      return (value - range.lower) / range.size();
    };
    return {room.left() + static_cast<int>(at(x, across) * room.width()),
            room.bottom() - static_cast<int>(at(y, up) * room.height())};
  }

  /// Whether a colour stands within `reach` pixels of a place.
  bool HasColor(const QPoint& at, const QColor& color, int reach = 3) const {
    for (int y = -reach; y <= reach; ++y) {
      for (int x = -reach; x <= reach; ++x) {
        if (!image.valid(at + QPoint(x, y))) continue;
        const QColor here = image.pixelColor(at + QPoint(x, y));
        const int far = std::abs(here.red() - color.red()) +
                        std::abs(here.green() - color.green()) +
                        std::abs(here.blue() - color.blue());
        if (far < 90) return true;
      }
    }
    return false;
  }

  double RatioOfScales() const {
    return view.xAxis->range().size() / view.axisRect()->width() /
           (view.yAxis->range().size() / view.axisRect()->height());
  }

  QColor ColorOfRole(SeriesRole role) const { return ColorOf(role, view.palette()); }

  FitCurves typed;
  FitCurves result;
  DiagramChoices choices;
  Diagram diagram;
  DiagramView view;
  QImage image;
};

TEST_F(DiagramViewTest, PutsEachCurveWhereItsValuesAre) {
  struct Case {
    DiagramKind kind;
    std::vector<double> x;
    std::vector<double> y;
  };
  std::vector<double> levels = typed.passband.obtained;
  for (double& level : levels) level = 20 * std::log10(level);
  const StepResponse step = StepResponseOf(*typed.h, 10, 20);
  const Case cases[] = {
      {DiagramKind::magnitude, typed.passband.frequency, levels},
      {DiagramKind::error, typed.passband.frequency, typed.passband.decibels},
      {DiagramKind::delay, typed.delayPoints.frequency, typed.delayPoints.own},
      {DiagramKind::phase, typed.passband.frequency, typed.h->Phases(typed.passband.frequency)},
      {DiagramKind::step, step.nanoseconds, step.values}};
  choices.hidden = {result.name};  // it would lie over the other
  for (const Case& each : cases) {
    Show(each.kind);
    int seen = 0;
    for (std::size_t i = 1; i + 2 < each.x.size(); ++i) {
      if (!std::isfinite(each.y[i])) continue;
      // A mark may lie over it.
      if (HasColor(Pixel(each.x[i], each.y[i]), ColorOfRole(SeriesRole::typed))) ++seen;
    }
    EXPECT_GT(seen, static_cast<int>(each.x.size()) - 7) << static_cast<int>(each.kind);
  }
}

TEST_F(DiagramViewTest, RingsWhatIsWanted) {
  Show(DiagramKind::magnitude);
  int seen = 0;
  for (std::size_t i = 0; i + 1 < typed.passband.yout.size(); ++i) {
    const QPoint at = Pixel(typed.passband.frequency[i], 20 * std::log10(typed.passband.yout[i]));
    if (HasColor(at, view.palette().color(QPalette::Text), 6)) ++seen;
  }
  EXPECT_EQ(seen, 20);
  choices.isLinear = true;
  Show(DiagramKind::magnitude);
  EXPECT_TRUE(HasColor(Pixel(10, 0), view.palette().color(QPalette::Text), 6)) << "0 has a place";
}

TEST_F(DiagramViewTest, DrawsManyPointsFinerThanAFew) {
  // How high the marks of so many points in a row are.
  const auto height = [this](int count) {
    Diagram flat;
    flat.x.to = count + 1;
    flat.y = {"", -1, 1};
    flat.series = {{"", SeriesRole::wanted, {}, {}}};
    for (int i = 1; i <= count; ++i) flat.series[0].x.push_back(i);
    flat.series[0].y.assign(flat.series[0].x.size(), 0);
    view.Show(flat);
    view.replot();
    image = view.grab().toImage();
    int highest = 0;
    for (int y = 0; y < 10; ++y) {
      const QPoint above = Pixel((count + 1) / 2., 0) - QPoint(0, y);
      if (image.pixelColor(above).lightness() < 200) highest = y;
    }
    return highest;
  };
  EXPECT_GE(height(21), 3);
  EXPECT_LE(height(801), 2) << "no band that covers the curves";
}

TEST_F(DiagramViewTest, PutsPolesZerosAndGhostsIntoEqualScales) {
  Show(DiagramKind::poles);
  EXPECT_NEAR(RatioOfScales(), 1, .01);
  for (const Location& at : result.locations) {
    EXPECT_TRUE(HasColor(Pixel(at.real, at.imaginary), ColorOfRole(SeriesRole::result), 8));
  }
  const Location& ghost = typed.locations[2];
  EXPECT_TRUE(HasColor(Pixel(ghost.real, ghost.imaginary), ColorOfRole(SeriesRole::ghostPoles), 3));
}

TEST_F(DiagramViewTest, DrawsDeviationsAsEllipses) {
  result.deviations.assign(result.locations.size(), {});
  result.deviations[1] = {.05, .1};
  Show(DiagramKind::poles);
  ASSERT_EQ(diagram.ellipses.size(), 1U);
  const Location& at = result.locations[1];
  for (const auto& [x, y] : {std::pair(.05, 0.0), {-.05, 0.0}, {0.0, .1}, {0.0, -.1}}) {
    EXPECT_TRUE(HasColor(Pixel(at.real + x, at.imaginary + y), ColorOfRole(SeriesRole::result), 4));
  }
}

TEST_F(DiagramViewTest, HasNoFiguresWhereItShowsNothing) {
  view.Show(MakeDiagram(DiagramKind::magnitude, {}, {}));
  EXPECT_FALSE(view.xAxis->tickLabels());
  EXPECT_EQ(view.xAxis->label(), "frequency");
  EXPECT_EQ(view.accessibleName(), "no curve");
  typed.isPointsAlone = true;
  const ShownCurves points = {&typed};
  EXPECT_TRUE(MakeDiagram(DiagramKind::magnitude, points, {}).hasFigures);
  EXPECT_FALSE(MakeDiagram(DiagramKind::step, points, {}).hasFigures);
}

TEST_F(DiagramViewTest, KeepsTheLegendOffTheCurves) {
  for (const QSize size : {QSize(600, 400), QSize(340, 260), QSize(420, 320), QSize(900, 300)}) {
    for (const DiagramKind kind : {DiagramKind::magnitude, DiagramKind::delay}) {
      choices.isLogFrequency = size.width() < 500;  // f = 0 then has a note
      view.resize(size);
      QApplication::processEvents();
      Show(kind);
      const QRectF legend = view.legend->outerRect();
      if (const auto* note = view.findChild<QCPItemText*>("note")) {
        EXPECT_FALSE(legend.intersects(
            {note->topLeft->pixelPosition(), note->bottomRight->pixelPosition()}));
      }
      for (const Series& series : diagram.series) {
        for (std::size_t i = 0; i < series.x.size(); ++i) {
          if (std::isnan(series.y[i])) continue;
          const QPointF at(view.xAxis->coordToPixel(series.x[i]),
                           view.yAxis->coordToPixel(series.y[i]));
          ASSERT_FALSE(legend.adjusted(-3, -3, 3, 3).contains(at))
              << size.width() << "x" << size.height() << " " << series.name << " at "
              << series.x[i];
        }
      }
    }
  }
}

TEST_F(DiagramViewTest, NamesItsCurvesAndItsWorstErrorInTheSmallestPane) {
  view.setFont(QFont("DejaVu Sans", 10));
  for (const bool isLinear : {false, true}) {
    choices.isLinear = isLinear;
    view.resize(350, 198);
    QApplication::processEvents();
    for (const DiagramKind kind : {DiagramKind::magnitude, DiagramKind::delay}) {
      Show(kind);
      EXPECT_TRUE(view.legend->visible()) << "nothing else tells the curves apart";
    }
    view.resize(330, 85);
    QApplication::processEvents();
    Show(DiagramKind::error);
    const auto& note = *view.findChild<QCPItemText*>("note");
    const QRectF text(note.topLeft->pixelPosition(), note.bottomRight->pixelPosition());
    for (const Stop& stop : diagram.stops) {
      EXPECT_FALSE(
          text.contains(view.xAxis->coordToPixel(stop.x), view.yAxis->coordToPixel(stop.y)));
    }
  }
}

TEST_F(DiagramViewTest, HasThreeFiguresAtTheLowStripsErrors) {
  Show(DiagramKind::error);
  EXPECT_GT(view.yAxis->ticker()->tickCount(), 3) << "where there is room";
  view.resize(600, 90);
  for (const double half : {.0026, .082, .21, .24, 4.9, 5.07, 99., 100.}) {
    view.yAxis->setRange(-half, half);
    view.replot();
    const QVector<double> seen = view.yAxis->tickVector();
    const auto isSeen = [half](double tick) { return std::abs(tick) <= half * (1 + 1e-9); };
    EXPECT_EQ(std::ranges::count_if(seen, isSeen), 3) << half;
  }
}

TEST_F(DiagramViewTest, RingsAPlaceAtTheEdgeWhole) {
  Show(DiagramKind::magnitude);
  view.Mark(0);
  view.xAxis->setRange(0, 5);
  const QColor ring = view.palette().color(QPalette::Highlight);
  const auto isRinged = [&] {
    view.replot();
    image = view.grab().toImage();
    const QPoint left(view.fontMetrics().height() / 2, 0);
    return HasColor(view.PositionOf(0).toPoint() - left, ring, 2);
  };
  EXPECT_TRUE(isRinged());
  view.xAxis->setRange(.1, 5);
  EXPECT_FALSE(isRinged());
}

TEST_F(DiagramViewTest, ZoomsByWheelPinchAndBoxAtThePointer) {
  Show(DiagramKind::magnitude);
  const QPoint at = view.axisRect()->rect().center() + QPoint(60, 0);
  const QCPRange whole = view.xAxis->range();
  const auto expectZoomedAt = [&](const char* by) {
    EXPECT_LT(view.xAxis->range().size(), whole.size()) << by;
    view.FitView();
    EXPECT_EQ(view.xAxis->range(), whole) << by;
  };
  const double under = view.xAxis->pixelToCoord(at.x());
  QWheelEvent wheel(at, view.mapToGlobal(at), {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase,
                    false);
  QApplication::sendEvent(&view, &wheel);
  EXPECT_NEAR(view.xAxis->pixelToCoord(at.x()), under, 1e-9) << "what is under the pointer stays";
  expectZoomedAt("wheel");
  QNativeGestureEvent pinch(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, at,
                            at, view.mapToGlobal(at), .25, {});
  QApplication::sendEvent(&view, &pinch);
  EXPECT_NEAR(view.xAxis->range().size() / whole.size(), .8, 1e-9);
  EXPECT_NEAR(view.xAxis->pixelToCoord(at.x()), under, 1e-9);
  expectZoomedAt("pinch");
  const auto drawBox = [&](const QPoint& end) {
    QTest::mousePress(&view, Qt::LeftButton, Qt::NoModifier, at);
    QMouseEvent move(QEvent::MouseMove, end, view.mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                     {});
    QApplication::sendEvent(&view, &move);
    QTest::mouseRelease(&view, Qt::LeftButton, Qt::NoModifier, end);
  };
  const QCPRange up = view.yAxis->range();
  drawBox({-50, at.y() + 3});
  EXPECT_EQ(view.yAxis->range(), up) << "a line zooms the other axis alone";
  EXPECT_NEAR(view.xAxis->range().lower, whole.lower, whole.size() / 100) << "not beyond the edge";
  expectZoomedAt("box");
  Show(DiagramKind::poles);
  const QCPRange across = view.xAxis->range();
  drawBox(at + QPoint(90, 60));
  EXPECT_LT(view.xAxis->range().size(), across.size());
  EXPECT_NEAR(RatioOfScales(), 1, .01) << "equal scales stay";
}

TEST_F(DiagramViewTest, KeepsWhatIsLookedAt) {
  Show(DiagramKind::phase);
  view.xAxis->setRange(2, 4);
  view.SetFrequencies(2, 5);
  const QCPRange up = view.yAxis->range();
  Show(DiagramKind::delay);
  EXPECT_EQ(view.xAxis->range(), QCPRange(2, 5)) << "the same frequencies in another diagram";
  EXPECT_NE(view.yAxis->range(), up) << "but its own values";
  view.FitView();
  Show(DiagramKind::poles);
  QTest::keyClick(&view, Qt::Key_Plus);
  view.resize(300, 400);
  QApplication::processEvents();
  EXPECT_NEAR(RatioOfScales(), 1, .01) << "equal scales in another size";
}

TEST_F(DiagramViewTest, NamesInTheLegendWhatItHasRoomFor) {
  view.resize(150, 200);
  Show(DiagramKind::magnitude);
  view.resize(900, 500);
  QApplication::processEvents();
  ASSERT_TRUE(view.legend->visible());
  QStringList names;
  for (int i = 0; i < view.plottableCount(); ++i) names << view.plottable(i)->name();
  EXPECT_TRUE(names.contains(ToQString(LegendText(typed)))) << names.join(';').toStdString();
}

TEST_F(DiagramViewTest, PansByMiddleButtonAndShift) {
  for (const auto& [button, modifier] : {std::pair(Qt::MiddleButton, Qt::KeyboardModifiers()),
                                         {Qt::LeftButton, Qt::ShiftModifier}}) {
    choices.isLogFrequency = button == Qt::MiddleButton;
    Show(DiagramKind::phase);
    view.FitView();
    // On a point as well.
    const QPoint from = view.PositionOf(10).toPoint();
    const double before = view.xAxis->pixelToCoord(from.x());
    QTest::mousePress(&view, button, modifier, from);
    QMouseEvent move(QEvent::MouseMove, from + QPoint(40, 0), view.mapToGlobal(from), Qt::NoButton,
                     button, modifier);
    QApplication::sendEvent(&view, &move);
    QTest::mouseRelease(&view, button, modifier, from + QPoint(40, 0));
    EXPECT_NEAR(view.xAxis->pixelToCoord(from.x() + 40), before, 1e-9) << "it follows the hand";
  }
}

TEST_F(DiagramViewTest, TellsTheStopUnderThePointerInEachDiagram) {
  for (const DiagramKind kind :
       {DiagramKind::magnitude, DiagramKind::error, DiagramKind::delay, DiagramKind::poles}) {
    Show(kind);
    QSignalSpy reached(&view, &DiagramView::stopReached);
    const std::size_t stop = 3;
    QMouseEvent move(QEvent::MouseMove, view.PositionOf(stop).toPoint(),
                     view.mapToGlobal(view.PositionOf(stop).toPoint()), Qt::NoButton, {}, {});
    QApplication::sendEvent(&view, &move);
    ASSERT_EQ(reached.count(), 1);
    const auto found = reached[0][0].value<std::optional<std::size_t>>();
    ASSERT_TRUE(found) << static_cast<int>(kind);
    EXPECT_EQ(view.PositionOf(*found), view.PositionOf(stop));
  }
}

}  // namespace
}  // namespace polefit::testing

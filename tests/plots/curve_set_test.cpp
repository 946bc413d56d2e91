#include "plots/curve_set.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cmath>
#include <thread>

#include "plots/location_trust.h"
#include "plots/move_location.h"
#include "record/same_problem.h"
#include "solver/example_problem.h"
#include "solver/report/deviations.h"
#include "solver/report/last_run.h"
#include "solver/search/endings.h"
#include "solver/search/search.h"

namespace polefit::testing {
namespace {

/// Names of what is shown, with a star where it is pale.
std::string Shown(CurveSet& set) {
  std::string names;
  for (const FitCurves* const curves : set.Shown()) {
    names += curves->isPointsAlone ? "points" : curves->name;
    names += curves->isPale && !curves->isPointsAlone ? "* " : " ";
  }
  return names;
}

std::string Numbers(int count, double first, double step) {
  std::string text;
  for (int i = 0; i < count; ++i) text += TypedNumber(first + step * i) + " ";
  return text;
}

TEST(CurveSet, BearsTheLargestProblem) {
  const ResponseRecord record = ExampleRecord(
      "Ex-Zpair.1", "6=40 40; 7=" + Numbers(40, .1, .02) + "; 8=" + Numbers(40, .1, .02) + "; 9=" +
                        Numbers(40, .02, .02) + "; 10=N; 11=40 20 0; 11a=" + Numbers(40, 1.1, .02) +
                        "; 11b=" + Numbers(20, .1, .02) + "; 11c=" + Numbers(20, .3, .04));
  CurveSet set;
  set.Read(record);
  set.SetResult(record, "19:40");
  ASSERT_EQ(Shown(set), "typed result 19:40 ");
  for (int kind = 0; kind <= static_cast<int>(DiagramKind::step); ++kind) {
    const Diagram diagram = MakeDiagram(static_cast<DiagramKind>(kind), set.Shown(), {});
    EXPECT_LT(diagram.y.from, diagram.y.to) << kind;
  }
  EXPECT_EQ(set.Typed()->h->PoleCount(), 120);
  PreviewWorker worker([] {});
  worker.Request(record);
  std::this_thread::sleep_for(std::chrono::milliseconds(20));  // and away while it solves
}

TEST(CurveSet, DrawsFourCurvesAtMost) {
  const ResponseRecord record = ExampleRecord("Ex-Zpair.1");
  CurveSet set;
  set.Read(record);
  set.SetResult(record, "19:40");
  set.SetOthers({{"a", record}, {"b", record}, {"c", record}});
  EXPECT_EQ(Shown(set), "typed result 19:40 a b ");
  EXPECT_EQ(set.StateInWords(), "result 19:40, 2 of 3 ticked runs");
}

TEST(CurveSet, ShowsWhatBelongsToTheForm) {
  const auto example = [](const char* answers) { return ExampleRecord("Ex-Delay.101", answers); };
  CurveSet set;
  EXPECT_EQ(Shown(set), "");
  EXPECT_EQ(set.State(), PaneState::nothing);
  set.Read(example("8=x"));
  EXPECT_EQ(Shown(set), "points ") << "the wanted points need no poles";
  EXPECT_EQ(set.State(), PaneState::nothing);
  set.Read(example(""));
  EXPECT_EQ(Shown(set), "typed ");
  set.SetResult(example("8=.23 .3 .34; 9=.95 .67 .3"), "19:40");
  EXPECT_EQ(Shown(set), "typed result 19:40 ");
  set.Read(example("8=.6 .4 .3"));
  EXPECT_EQ(Shown(set), "typed result 19:40 ") << "other start values are the same problem";
  EXPECT_EQ(set.State(), PaneState::result);
  set.Read(example("6=0 2; 8=.5 .4; 9=.3 .7"));
  EXPECT_EQ(Shown(set), "typed result 19:40* ");
  EXPECT_EQ(set.State(), PaneState::resultChanged);
  set.Read(example("9=.3 .7"));
  EXPECT_EQ(Shown(set), "typed* ");
  EXPECT_EQ(set.State(), PaneState::lastGood);
  EXPECT_EQ(set.Typed(), nullptr) << "nothing to be moved";
  set.Read(ExampleRecord("Ex-Zpair.1"));
  EXPECT_EQ(Shown(set), "typed ") << "the result of another file's points";
  set.Read(ExampleRecord("Ex-Zpair.1", "8=; 9="));
  EXPECT_EQ(Shown(set), "typed ");
  EXPECT_EQ(set.StateInWords(), "typed values, rough where empty");
}

TEST(CurveSet, KeepsTheLastGoodCurveOverThePointsAsTheyStand) {
  ResponseRecord record = ExampleRecord("Ex-Zpair.1");
  CurveSet set;
  set.Read(record);
  record.Slot(slot::kPoleReal) = "x";
  record.passband.At(3, 3) = ".5";
  set.Read(record);
  ASSERT_EQ(Shown(set), "typed* ");
  EXPECT_EQ(set.Shown().front()->passband.yout[2], .5);
  record.passband.At(3, 1) = "1.1";
  set.Read(record);
  EXPECT_EQ(Shown(set), "points ") << "the curve was another table's";
  record.passband.At(3, 1) = "y";
  set.Read(record);
  EXPECT_EQ(Shown(set), "points ") << "points with a fault leave the last ones";
  set.Read(ResponseRecord());
  EXPECT_EQ(Shown(set), "") << "nothing of a problem that is gone";
}

TEST(CurveSet, TakesAPreviewOfWhatIsTypedOnly) {
  const ResponseRecord record = ExampleRecord("Ex-Zpair.1");
  CurveSet set;
  set.Read(record);
  set.SetResult(record, "19:40");
  const Preview preview = MakePreview(record, [] { return false; });
  EXPECT_TRUE(set.SetPreview(preview));
  EXPECT_EQ(Shown(set), "typed preview ") << "in the place of the older result";
  set.SetResult(record, "19:40");
  EXPECT_EQ(Shown(set), "typed result 19:40 ");
  set.Read(ExampleRecord("Ex-Zpair.1", "5=11"));
  EXPECT_EQ(Shown(set), "typed result 19:40* ");
  EXPECT_FALSE(set.SetPreview(preview)) << "it came late";
  set.Read(ExampleRecord("Ex-Zpair.1", "8="));
  EXPECT_FALSE(set.SetPreview(preview));
}

TEST(SameProblem, IsToldByEverythingButTheValuesThatARunFinds) {
  struct Case {
    const char* answers;
    bool isSame;
  };
  const Case cases[] = {{"", true},      {"8=1 1 1 1", true}, {"12=3", true},  {"11b=.1", true},
                        {"5=11", false}, {"6=1 3", false},    {"2=-1", false}, {"14=5", false}};
  for (const Case& each : cases) {
    EXPECT_EQ(
        StateSameProblem(ExampleRecord("Ex-Zpair.1"), ExampleRecord("Ex-Zpair.1", each.answers)),
        each.isSame)
        << each.answers;
  }
  ResponseRecord typed = ExampleRecord("Ex-Zpair.1");
  typed.passband.At(21, 2) = ".6366";
  EXPECT_FALSE(StateSameProblem(ExampleRecord("Ex-Zpair.1"), typed));
}

TEST(Deviations, AreThoseOfTheReport) {
  for (const char* const name : {"Ex-Delay.101", "Ex-Zpair.1", "Ex-Yzero.101"}) {
    SCOPED_TRACE(name);
    const ResponseRecord record = ExampleRecord(name);
    const Problem problem = GoodProblem(record);
    Listener nobody;
    const Summary summary = Solve(problem, nobody, [] { return false; });
    auto locations = LocationsOf(problem, summary.best);
    AddDeviations(JudgeTrust(problem, summary.best, locations, summary.roundingCost), locations);
    const ResponseRecord found = LastRunRecord(record, problem, summary.best);
    std::vector<Finding> findings;
    const auto curves = CurvesOf(found, CurveRole::result, "result", findings);
    ASSERT_TRUE(curves);
    ASSERT_EQ(curves->deviations.size(), curves->locations.size());
    for (const auto& location : locations) {
      if (location.isOwnPole || !location.IsDetermined()) continue;
      // The answers are written in ascending order, with 9 digits.
      double nearest = 1e9;
      for (std::size_t i = 0; i < curves->locations.size(); ++i) {
        const Location& at = curves->locations[i];
        if (at.kind != location.kind) continue;
        const bool isHere = std::abs(at.imaginary - location.imaginary.value) < 1e-6 &&
                            std::abs(std::abs(at.real) - location.real.value) < 1e-6;
        if (!isHere) continue;
        const double wanted =
            std::isfinite(location.imaginary.deviation) ? location.imaginary.deviation : 0;
        nearest = std::abs(curves->deviations[i].imaginary - wanted);
      }
      EXPECT_LT(nearest, 1e-5) << location.Name();
    }
    EXPECT_TRUE(CurvesOf(record, CurveRole::typed, "typed", findings)->deviations.empty())
        << "typed values are no answer";
  }
}

}  // namespace
}  // namespace polefit::testing

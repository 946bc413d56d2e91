#include "solver/search/stopping.h"

#include <gtest/gtest.h>

#include "solver/example_problem.h"
#include "solver/search/endings.h"
#include "solver/search/structure.h"

namespace polefit::testing {
namespace {

/// Starts with these costs, the kinds in turn typed, data, random, random ...
Summary SummaryOf(const std::vector<double>& costs, double negligible = 1e-20) {
  Summary summary;
  summary.negligible = negligible;
  for (const double cost : costs) {
    StartSummary start;
    start.kind = summary.starts.empty() ? StartKind::typed : StartKind::random;
    start.best.isFinite = true;
    start.best.fit.cost = cost;
    summary.starts.push_back(start);
    if (!(summary.best.Cost() <= cost)) summary.best = start.best;
  }
  CountOptima(summary);
  return summary;
}

std::vector<double> Repeated(const std::vector<double>& costs, int count) {
  std::vector<double> list;
  for (int i = 0; i < count; ++i) list.push_back(costs[static_cast<std::size_t>(i) % costs.size()]);
  return list;
}

TEST(Stopping, WaitsForWitnessesByTheNumberOfOptima) {
  struct Case {
    std::vector<double> costs;
    int enough;
  };
  const Case cases[] = {{{1}, 7}, {{1, 2}, 12}, {{1, 2, 3}, 17}, {{1, 1.0009}, 7}};
  for (const Case& one : cases) {
    EXPECT_TRUE(HasSeenEnough(SummaryOf(Repeated(one.costs, one.enough))));
    EXPECT_FALSE(HasSeenEnough(SummaryOf(Repeated(one.costs, one.enough - 1))));
  }
  EXPECT_TRUE(HasSeenEnough(SummaryOf({1, 1e-21}))) << "an exact fit ends the search";
  std::vector<double> oneLow(30, 2.0);
  oneLow.back() = 1;
  EXPECT_FALSE(HasSeenEnough(SummaryOf(oneLow))) << "the lowest F was reached once";
}

TEST(Stopping, CountsWitnessesAndOptima) {
  Summary summary = SummaryOf({2, 1, 1.0005, 3, 3});
  EXPECT_EQ(summary.witnesses, 5);
  EXPECT_EQ(summary.agreeing, 2);
  ASSERT_EQ(summary.optima.size(), 3U);
  EXPECT_EQ(summary.optima[0].starts, 2);
  EXPECT_DOUBLE_EQ(summary.unseenShare, 3 * 4 / (5. * 4));
  summary.starts[1].kind = StartKind::perturbed;
  summary.starts[3].ending = summary.starts[4].ending = EndReason::stepsLim;
  CountOptima(summary);
  EXPECT_EQ(summary.witnesses, 2);
  EXPECT_EQ(summary.agreeing, 1);
  EXPECT_FALSE(summary.optima[2].isConverged);
  EXPECT_TRUE(summary.optima[0].isConverged);
}

TEST(Endings, JudgeTheErrorByTheUnitsOfThePoints) {
  ResponseRecord record = ExampleRecord("Ex-Zpair.1");
  for (int row = 1; row <= record.nFreqPoints; ++row) record.passband.At(row, 2) = "1";
  record.passband.At(3, 3) = "1.00e0";
  const Problem problem = GoodProblem(record);
  EXPECT_EQ(problem.yinUnit, 0) << "a column of ones is meant exactly";
  EXPECT_NEAR(problem.youtUnit, 1e-5, 1e-12);
  Iterate iterate;
  iterate.parameters = problem.typedParameters;
  iterate.fit.gain = 1;
  iterate.isFinite = true;
  EXPECT_NEAR(RoundingCost(problem, iterate), 1e-10 / 12, 1e-16);

  struct Case {
    EndReason ending;
    double cost;
    EndReason judged;
  };
  const Case cases[] = {{EndReason::stepsLim, 1.9e-11, EndReason::finerThanTyped},
                        {EndReason::evalMax, 1.9e-11, EndReason::finerThanTyped},
                        {EndReason::stepsLim, 2.1e-11, EndReason::stepsLim},
                        {EndReason::evalMax, 9e-15, EndReason::finerThanTyped},
                        {EndReason::requested, 1e-30, EndReason::requested},
                        {EndReason::converged, 1, EndReason::converged}};
  for (const Case& one : cases) {
    iterate.fit.cost = iterate.fit.meanSquare = one.cost;
    EXPECT_EQ(JudgedEnding(one.ending, problem, iterate, 1e-11), one.judged);
  }
  iterate.fit.cost = iterate.fit.meanSquare = 9e-15;
  EXPECT_EQ(JudgedEnding(EndReason::evalMax, problem, iterate, 0), EndReason::tinyError);
  Problem small = problem;
  small.rows.targets *= 1e-6;
  EXPECT_EQ(JudgedEnding(EndReason::evalMax, small, iterate, 0), EndReason::evalMax);
  iterate.fit.delayMeanSquare = 1e-4;
  EXPECT_EQ(JudgedEnding(EndReason::evalMax, problem, iterate, 0), EndReason::evalMax);
}

TEST(Endings, TellALastEqualisedZeroAtTheBound) {
  const Problem problem = GoodProblem(ExampleRecord("Ex-Yzero.101"));
  Iterate point;
  point.parameters = problem.typedParameters;
  double& last = point.parameters[problem.constellation.MovedCount() - 1];
  for (const auto& [share, isAtBound] : {std::pair{.999999, true}, std::pair{.9999, false}}) {
    last = share * problem.largest;
    EXPECT_EQ(IsLastZeroAtBound(problem, point), isAtBound) << share;
  }
  const Problem fitted = GoodProblem(ExampleRecord("Ex-Zpair.1"));
  point.parameters = fitted.upper;
  EXPECT_FALSE(IsLastZeroAtBound(fitted, point)) << "nothing is equalised";
}

TEST(Endings, FindWhatHasMetAndPutItApart) {
  ResponseRecord record =
      ExampleRecord("Ex-Delay.101", "11=3 0 0; 11a=1.2 1.2001 2; 10=N; 14=5; 9=.3 .000001 1.1");
  record.passband.At(21, 1) = "11";  // beyond Freq Norm: the zeros are fitted
  const Problem problem = GoodProblem(record);
  Iterate iterate;
  iterate.parameters = problem.typedParameters;
  const auto groups = MetZeros(problem, iterate);
  const auto pairs = PairsOnSigmaAxis(problem, iterate);
  ASSERT_EQ(groups.size(), 1U);
  EXPECT_EQ(groups[0].size(), 2U);
  ASSERT_EQ(pairs.size(), 1U);

  const Problem split = Restructured(problem, iterate, pairs,
                                     {{FactorKind::sigmaPole, .8}, {FactorKind::sigmaPole, 1.25}});
  EXPECT_EQ(split.poleCounts, (std::array<int, 2>{2, 2}));
  EXPECT_EQ(split.constellation.orcaCount, problem.constellation.orcaCount);
  EXPECT_EQ(split.lower.size(), split.constellation.orcaCount);
  const Problem joined =
      Restructured(problem, iterate, groups[0], {{FactorKind::zeroQuad, .1, 1.2}});
  EXPECT_EQ(joined.zeroCounts, (std::array<int, 3>{1, 0, 1}));
  EXPECT_EQ(joined.PoleCount(), problem.PoleCount());
}

}  // namespace
}  // namespace polefit::testing

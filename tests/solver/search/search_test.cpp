#include "solver/search/search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <utility>

#include "solver/example_problem.h"

namespace polefit::testing {
namespace {

Summary SolveQuietly(const Problem& problem) {
  Listener nobody;
  return Solve(problem, nobody, [] { return false; });
}

/// The example and its best known cost.
class Examples : public ::testing::TestWithParam<std::pair<std::string, double>> {};

TEST_P(Examples, AreSolvedToTheBestKnownCostFromTheTypedStart) {
  const auto& [name, bestKnown] = GetParam();
  const Summary summary = SolveQuietly(GoodProblem(ExampleRecord(name)));
  EXPECT_TRUE(IsConverged(summary.ending));
  EXPECT_LT(summary.starts.front().best.Cost(), 1.001 * bestKnown);
  EXPECT_GT(summary.best.Cost(), 0.999 * bestKnown);
  EXPECT_LE(summary.evaluations, 2000);
}

INSTANTIATE_TEST_SUITE_P(All, Examples,
                         ::testing::Values(std::pair{"Ex-Yzero.101", 2.277862e-06},
                                           std::pair{"Ex-Yzero.102", 2.277862e-06},
                                           std::pair{"Ex-CNTL.1", 2.277862e-06},
                                           std::pair{"Ex-Zpair.1", 2.507429e-06},
                                           std::pair{"Ex-Delay.101", 1.595938e-04},
                                           std::pair{"Ex-Delay.111", 1.837938e-04},
                                           std::pair{"Ex-Delay.112", 1.837938e-04}),
                         [](const ::testing::TestParamInfo<Examples::ParamType>& example) {
                           std::string name = example.param.first;
                           std::replace_if(
                               name.begin(), name.end(),
                               [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
                           return name;
                         });

TEST(Search, LeavesAPoorLocalOptimumForABetterOne) {
  const Summary summary = SolveQuietly(GoodProblem(ExampleRecord(
      "Ex-Yzero.101", "8=.207 .847 .13 .0051; 9=.623 .138 .858 3.9; 11a=1 1.32 3.9")));
  EXPECT_GT(summary.starts.front().best.Cost(), 2 * 2.277862e-06);
  EXPECT_NEAR(summary.best.Cost() / 2.277862e-06, 1, .001);
  EXPECT_GT(summary.chosen, 0U);
  EXPECT_GT(summary.optima.size(), 1U);
}

TEST(Search, KeepsTheTypedStartWhenOthersAreHardlyLower) {
  const Summary summary = SolveQuietly(GoodProblem(ExampleRecord("Ex-Yzero.101")));
  EXPECT_EQ(summary.chosen, 0U);
  EXPECT_GE(summary.agreeing, 5);
  EXPECT_LT(summary.unseenShare, .05);
}

TEST(Search, PrefersAStartThatConvergedToOneThatWasCutShort) {
  const Summary fewSteps = SolveQuietly(GoodProblem(ExampleRecord("Ex-Delay.111", "S4=1")));
  EXPECT_FALSE(fewSteps.starts.front().HasConverged());
  EXPECT_TRUE(fewSteps.starts[fewSteps.chosen].HasConverged());
  EXPECT_TRUE(IsConverged(fewSteps.ending));
  EXPECT_NEAR(fewSteps.best.Cost() / 1.837938e-04, 1, .001);

  const Summary nowhere = SolveQuietly(GoodProblem(ExampleRecord("Ex-Zpair.1", "S4=2; S6=24")));
  EXPECT_EQ(nowhere.starts.front().ending, EndReason::stepsLim);
  EXPECT_EQ(nowhere.ending, EndReason::evalMax);
}

TEST(Search, HasConvergedWithTheTypedStartThoughALowerOneWasCutShort) {
  const Summary summary = SolveQuietly(GoodProblem(ExampleRecord(
      "Ex-Yzero.101", "8=.207 .847 .13 .0051; 9=.623 .138 .858 3.9; 11a=1 1.32 3.9; S6=98")));
  ASSERT_EQ(summary.starts.size(), 2);
  EXPECT_TRUE(summary.starts[0].HasConverged());
  EXPECT_EQ(summary.chosen, 1U) << "the data start is lower";
  EXPECT_TRUE(IsConverged(summary.ending));
}

TEST(Search, DoesNotCareForTheOrderOfPoints) {
  ResponseRecord record = ExampleRecord("Ex-Delay.101");
  const Summary sorted = SolveQuietly(GoodProblem(record));
  for (int row = 1; row <= 10; ++row) {
    for (int column = 1; column <= 3; ++column) {
      std::swap(record.passband.At(row, column), record.passband.At(22 - row, column));
    }
  }
  for (int column = 1; column <= 2; ++column) {
    std::swap(record.delay.At(1, column), record.delay.At(17, column));
  }
  const Summary shuffled = SolveQuietly(GoodProblem(record));
  EXPECT_NEAR(shuffled.best.Cost() / sorted.best.Cost(), 1, 1e-6);
}

TEST(Search, FindsAKnownTransferFunctionAgain) {
  Problem problem = GoodProblem(ExampleRecord("Ex-Zpair.1"));
  Eigen::VectorXd known(10);
  known << .45, .3, .2, .6, .3, .9, .5, .15, .2, 1.3;
  problem.rows.targets =
      .7 * problem.rows.inputs * Magnitudes(problem.constellation, known, problem.rows.frequencies);
  const Summary summary = SolveQuietly(problem);
  EXPECT_LT(summary.best.Cost(), 1e-9);
  const Eigen::ArrayXd w = Eigen::ArrayXd::LinSpaced(50, 0, 1);
  const Eigen::ArrayXd found =
      summary.best.fit.gain * Magnitudes(problem.constellation, summary.best.parameters, w);
  EXPECT_LT((found - .7 * Magnitudes(problem.constellation, known, w)).abs().maxCoeff(), 1e-3);
}

TEST(Search, TakesAnExactFitForConverged) {
  Problem problem = GoodProblem(ExampleRecord("Ex-Zpair.1"));
  for (Eigen::ArrayXd* const column : {&problem.rows.frequencies, &problem.rows.inputs,
                                       &problem.rows.targets, &problem.rows.weights}) {
    *column = column->head(3).eval();
  }
  const Summary summary = SolveQuietly(problem);
  EXPECT_EQ(summary.ending, EndReason::converged);
  EXPECT_LT(summary.best.Cost(), summary.negligible);
  EXPECT_EQ(summary.optima.size(), 1U);
}

}  // namespace
}  // namespace polefit::testing

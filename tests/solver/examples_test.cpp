#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "solver/example_problem.h"
#include "solver/search.h"

namespace polefit {
namespace {

struct Expected {
  const char* name;
  double bestKnown;
};

class Examples : public testing::TestWithParam<Expected> {};

TEST_P(Examples, AreSolvedToTheBestKnownCostFromTheTypedStart) {
  const Problem problem = GoodProblem(ExampleRecord(GetParam().name));
  Listener nobody;
  const Summary summary = Solve(problem, nobody, [] { return false; });
  EXPECT_EQ(summary.ending, EndReason::zero);
  EXPECT_LT(summary.starts.front().best.Cost(), 1.001 * GetParam().bestKnown);
  EXPECT_GT(summary.best.Cost(), 0.999 * GetParam().bestKnown);
  EXPECT_LE(summary.evaluations, 2000);
}

INSTANTIATE_TEST_SUITE_P(
    All, Examples,
    testing::Values(Expected{"Ex-Yzero.101", 2.277862e-06}, Expected{"Ex-Yzero.102", 2.277862e-06},
                    Expected{"Ex-CNTL.1", 2.277862e-06}, Expected{"Ex-Zpair.1", 2.507429e-06},
                    Expected{"Ex-Delay.101", 1.595938e-04}, Expected{"Ex-Delay.111", 1.837938e-04},
                    Expected{"Ex-Delay.112", 1.837938e-04}),
    [](const testing::TestParamInfo<Expected>& expected) {
      std::string name = expected.param.name;
      std::replace_if(
          name.begin(), name.end(), [](char c) { return c == '-' || c == '.'; }, '_');
      return name;
    });

}  // namespace
}  // namespace polefit

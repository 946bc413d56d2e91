#include "solver/search/lynx.h"

#include <gtest/gtest.h>

#include <string>

#include "solver/example_problem.h"
#include "solver/search/second_starts.h"
#include "solver/search/wren.h"

namespace polefit::testing {
namespace {

/// Random pole pairs and omega-axis zeros; the first zero may stand beyond the next ones.
Problem RandomProblem(int zeroCount, RandomNumbers& random) {
  const int pairs = zeroCount + static_cast<int>(3 * random.Unit());
  std::string real;
  std::string imaginary;
  std::string zeros = "1";
  for (int i = 0; i < pairs; ++i) {
    real += std::to_string(random.Logarithmic(.006, 3.9)) + " ";
    imaginary += std::to_string(3.9 * random.Unit()) + " ";
  }
  for (int i = 1; i < zeroCount; ++i) zeros += " " + std::to_string(1 + 3 * random.Unit());
  Problem problem = GoodProblem(ExampleRecord(
      "Ex-Yzero.101", "6=0 " + std::to_string(pairs) + "; 8=" + real + "; 9=" + imaginary +
                          "; 11=" + std::to_string(zeroCount) + " 0 0; 11a=" + zeros));
  problem.typedParameters.tail(1)[0] += .5 * random.Unit() * random.Unit();
  return problem;
}

TEST(Lynx, EqualisesTheSidelobesOfAThousandRandomConstellations) {
  RandomNumbers random;
  Listener nobody;
  int failures = 0;
  int remez = 0;
  for (int i = 0; i < 1000; ++i) {
    const Problem problem = RandomProblem(2 + i % 5, random);
    const double largest = i % 2 == 0 ? 4 : 22;
    Eigen::VectorXd parameters = problem.typedParameters;
    Lynx lynx(problem.constellation, largest, problem.options, nobody);
    if (!lynx.Equalise(parameters)) ++failures;
    remez += lynx.RemezCount();
    // The peaks are looked for again: no sidelobe stands above the equal level.
    const double level = lynx.Peaks().front().level;
    const LogCurve curve(problem.constellation, parameters);
    for (double w = parameters.tail(1)[0]; w < largest; w *= 1.01) {
      ASSERT_LT(curve.At(w), level + 1e-4) << i << " at " << w;
    }
  }
  EXPECT_EQ(failures, 0);
  EXPECT_GT(remez, 0);  // or the fallback was never tried
}

TEST(Wren, FindsABumpNarrowerThanItsSamples) {
  const Problem problem = GoodProblem(ExampleRecord(
      "Ex-Yzero.101", "6=0 2; 8=1 .01; 9=6 5; 11=1 1 0; 11a=1; 11b=.05; 11c=5; 14=22"));
  const LogCurve curve(problem.constellation, problem.typedParameters);
  Listener nobody;
  EXPECT_NEAR(FindPeak(curve, {1, 22, true}, problem.options, nobody).frequency, 5, .01);
}

}  // namespace
}  // namespace polefit::testing

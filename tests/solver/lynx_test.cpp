#include "solver/lynx.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "solver/second_starts.h"

namespace polefit {
namespace {

/// A random constellation with `zeroCount` omega-axis zeros, the first one held.
Eigen::VectorXd RandomConstellation(int zeroCount, RandomNumbers& random, Constellation& to) {
  const int pairs = zeroCount + static_cast<int>(3 * random.Unit());
  std::vector<double> parameters;
  for (int i = 0; i < pairs; ++i) {
    to.factors.push_back({FactorKind::polePair, 2 * i, -1, 1});
    parameters.push_back(random.Logarithmic(.02, 2));
    parameters.push_back(1.5 * random.Unit());
  }
  to.orcaCount = 2 * pairs;
  to.lynxCount = zeroCount - 1;
  to.heldCount = 1;
  to.factors.push_back({FactorKind::omegaZero, to.orcaCount + to.lynxCount, 1, 0});
  for (int i = 0; i < to.lynxCount; ++i) {
    to.factors.push_back({FactorKind::omegaZero, to.orcaCount + i, 1, 0});
    parameters.push_back(1 + 3 * random.Unit());
  }
  std::sort(parameters.end() - to.lynxCount, parameters.end());
  parameters.push_back(1 + .5 * random.Unit() * random.Unit());
  return Eigen::Map<Eigen::VectorXd>(parameters.data(),
                                     static_cast<Eigen::Index>(parameters.size()));
}

TEST(Lynx, EqualisesTheSidelobesOfAThousandRandomConstellations) {
  RandomNumbers random;
  Listener nobody;
  const Options options;
  int failures = 0;
  int remez = 0;
  for (int i = 0; i < 1000; ++i) {
    Constellation constellation;
    Eigen::VectorXd parameters = RandomConstellation(2 + i % 5, random, constellation);
    Lynx lynx(constellation, i % 2 == 0 ? 4 : 22, options, nobody);
    if (!lynx.Equalise(parameters)) ++failures;
    remez += lynx.RemezCount();
    // The peaks are looked for again: no sidelobe stands above the equal level.
    const double level = lynx.Peaks().front().level;
    for (double w = parameters[parameters.size() - 1]; w < (i % 2 == 0 ? 4 : 22); w *= 1.01) {
      ASSERT_LT(LogCurve(constellation, parameters).At(w), level + 1e-4) << i << " at " << w;
    }
  }
  EXPECT_EQ(failures, 0);
  EXPECT_GT(remez, 0);  // or the fallback was never tried
}

}  // namespace
}  // namespace polefit

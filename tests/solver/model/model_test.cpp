#include "solver/model/model.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <string>
#include <utility>

#include "solver/example_problem.h"
#include "solver/report/report.h"

namespace polefit::testing {
namespace {

using Complex = std::complex<double>;

/// A problem with every kind of factor, and a pair on the sigma axis; its H(s) / H(0) is written
/// out in `DirectH`.
ResponseRecord EveryKind(bool isDoublet, bool isLossless, const std::string& sigmaZero) {
  return ExampleRecord("Ex-Delay.101",
                       "6=1 8; 7=.8; 8=.5 .4 .3 .6 .7 .2 .35 .9; 9=.3 .7 1.1 .2 .9 .5 1 0; "
                       "11=1 1 1; 11a=1.2; 11b=-.2 .9; 11c=1.3 .4; 10a=" +
                           sigmaZero + (isDoublet ? "; 10b=Y" : "; 10b=N") +
                           (isLossless ? "; 10c=Y" : "; 10c=N"));
}

Complex PairFactor(Complex s, double a, double b) {
  return ((s + a) * (s + a) + b * b) / (a * a + b * b);
}

Complex DirectH(Complex s, bool isDoublet, bool isLossless, double v) {
  const Complex one = (v - s) / (v + s);
  Complex h = isLossless ? (isDoublet ? one * one : one)
                         : (isDoublet ? 1.0 - s * s / (v * v) : 1.0 + s / v);
  h /= 1.0 + s / .8;
  const std::pair<double, double> poles[] = {{.5, .3}, {.4, .7}, {.3, 1.1}, {.6, .2},
                                             {.7, .9}, {.2, .5}, {.35, 1},  {.9, 0}};
  for (const auto& [a, b] : poles) h /= PairFactor(s, a, b);
  return h * (1.0 + s * s / 1.44) * PairFactor(s, -.2, 1.3) * PairFactor(s, .9, .4) *
         PairFactor(s, -.9, .4);
}

TEST(Model, IsTheProductOfItsFactorsInMagnitudeAndDelay) {
  for (const bool isDoublet : {false, true}) {
    for (const bool isLossless : {false, true}) {
      for (const char* const zero : {".5", "-.5"}) {
        const bool isPlain = !isDoublet && !isLossless;
        const double v = isPlain ? std::stod(zero) : .5;
        const Problem problem = GoodProblem(EveryKind(isDoublet, isLossless, zero));
        const Eigen::ArrayXd w = Eigen::ArrayXd::LinSpaced(140, 0, 3);
        const Eigen::ArrayXd magnitude =
            Magnitudes(problem.constellation, problem.typedParameters, w);
        const Eigen::ArrayXd delay = Delays(problem.constellation, problem.typedParameters, w);
        const LogCurve curve(problem.constellation, problem.typedParameters);
        for (Eigen::Index i = 0; i < w.size(); ++i) {
          const auto at = [&](double x) { return DirectH({0, x}, isDoublet, isLossless, v); };
          const double h = 1e-6;
          const double direct = -std::arg(at(w[i] + h) / at(w[i] - h)) / (2 * h);
          EXPECT_NEAR(magnitude[i] / std::abs(at(w[i])), 1, 1e-12);
          EXPECT_NEAR(curve.At(w[i]), std::log(std::abs(at(w[i]))), 1e-11);
          EXPECT_NEAR(delay[i], direct, 1e-7);
        }
        EXPECT_TRUE(std::isfinite(curve.At(1.2) + curve.SlopeAt(1.2).first));  // on the zero
      }
    }
  }
}

TEST(Model, CountsPolesAndZerosOfEveryKind) {
  const Problem plain = GoodProblem(EveryKind(false, false, ".5"));
  const Problem both = GoodProblem(EveryKind(true, true, ".5"));
  EXPECT_EQ(std::pair(plain.PoleCount(), plain.ZeroCount()), std::pair(17, 9));
  EXPECT_EQ(std::pair(both.PoleCount(), both.ZeroCount()), std::pair(19, 10));
}

TEST(Objective, IsTheErrorMeasureWithItsWeights) {
  ResponseRecord record = EveryKind(false, true, ".5; 1a=150; 1b=.5; 2=-2; 3=Y");
  for (int row = 1; row <= record.nFreqPoints; ++row)
    record.passband.At(row, 4) = row % 2 ? "3" : "0";
  const Problem problem = GoodProblem(record);
  const double gain = 1.1;
  const double pi = std::acos(-1.0);
  double passband = 0;
  for (const PassbandPoint& point : problem.passband) {
    const double h = gain * std::abs(DirectH({0, point.frequency / 10}, false, true, .5));
    const double error = (point.yin * h - point.yout) * point.yout * point.yout * point.weight;
    passband += error * error / static_cast<double>(problem.passband.size());
  }
  double delay = 0;
  const Eigen::ArrayXd t =
      Delays(problem.constellation, problem.typedParameters, problem.rows.delayFrequencies);
  for (std::size_t j = 0; j < problem.delay.size(); ++j) {
    // The delay points stand on passband points, one behind.
    const double yout = problem.passband[j + 1].yout;
    const double total =
        problem.delay[j].tx + 1000 * t[static_cast<Eigen::Index>(j)] / (2 * pi * problem.freqNorm);
    const double error = problem.freqNorm / 1000 * (total - 150) / std::sqrt(yout);
    delay += error * error / static_cast<double>(problem.delay.size());
  }
  const Objective objective(problem.constellation, problem.rows);
  EXPECT_NEAR(objective.CostWithGain(problem.typedParameters, gain) / (10 * passband + delay), 1,
              1e-12);
}

TEST(Objective, HasTheBestGainAndTheBestDelayConstant) {
  const Problem problem = GoodProblem(EveryKind(true, false, ".5"));
  Objective objective(problem.constellation, problem.rows);
  Fit fit;
  ASSERT_TRUE(objective.Evaluate(problem.typedParameters, fit));
  const auto cost = [&](double gain) {
    return objective.CostWithGain(problem.typedParameters, gain);
  };
  EXPECT_NEAR(cost(fit.gain) / fit.cost, 1, 1e-12);
  EXPECT_GT(cost(1.001 * fit.gain), fit.cost);
  EXPECT_GT(cost(.999 * fit.gain), fit.cost);
}

TEST(Objective, IsTheSameWhenEveryRowStandsSevenTimes) {
  const Problem problem = GoodProblem(ExampleRecord("Ex-Delay.101", "11a=1.2"));
  DataRows often = problem.rows;
  for (Eigen::ArrayXd* column :
       {&often.frequencies, &often.inputs, &often.targets, &often.delayFrequencies,
        &often.delayOffsets, &often.delaySlopes, &often.delayLevels}) {
    *column = column->replicate(7, 1).eval();
  }
  Fit once;
  Fit seven;
  ASSERT_TRUE(
      Objective(problem.constellation, problem.rows).Evaluate(problem.typedParameters, once));
  ASSERT_TRUE(Objective(problem.constellation, often).Evaluate(problem.typedParameters, seven));
  EXPECT_NEAR(seven.cost / once.cost, 1, 1e-12);
  EXPECT_NEAR(seven.delayConstant / once.delayConstant, 1, 1e-12);
  EXPECT_NEAR(seven.largestError / once.largestError, 1, 1e-12);
  EXPECT_TRUE(seven.gradient.isApprox(once.gradient, 1e-9));
  EXPECT_TRUE(seven.hessian.isApprox(once.hessian, 1e-9));
  EXPECT_TRUE(seven.gaussNewton.isApprox(once.gaussNewton, 1e-9));
}

TEST(Objective, StaysInTheRangeOfNumbersWithManySmallLocations) {
  // 26 pole pairs and 13 quads in one place cancel out.
  std::string reals;
  for (int i = 0; i < 26; ++i) reals += "1e-5 ";
  const std::string quads = reals.substr(0, reals.size() / 2);
  const Problem problem = GoodProblem(ExampleRecord(
      "Ex-Zpair.1", "6=0 26; 8=" + reals + "; 9=" + reals + "; 11=0 0 13; 11b=" + quads +
                        "; 11c=" + quads + "; 13=1e-6"));
  Fit fit;
  ASSERT_TRUE(
      Objective(problem.constellation, problem.rows).Evaluate(problem.typedParameters, fit));
  const Eigen::ArrayXd& in = problem.rows.inputs;
  EXPECT_NEAR(fit.gain * in.square().sum() / (in * problem.rows.targets).sum(), 1, 1e-9);
  EXPECT_TRUE(Magnitudes(problem.constellation, problem.typedParameters, problem.rows.frequencies)
                  .isApproxToConstant(1, 1e-9));
}

}  // namespace
}  // namespace polefit::testing

#include "solver/model/transfer_function.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <string>
#include <vector>

#include "solver/example_problem.h"
#include "solver/model/step_response.h"
#include "solver/search/search.h"

namespace polefit::testing {
namespace {

using Complex = std::complex<double>;

TEST(TransferFunction, HasTheFiguresOfTheSearchInItsTablesAndCurves) {
  for (const char* const name : {"Ex-Yzero.101", "Ex-Yzero.102", "Ex-CNTL.1", "Ex-Zpair.1",
                                 "Ex-Delay.101", "Ex-Delay.111", "Ex-Delay.112"}) {
    SCOPED_TRACE(name);
    const Problem problem = GoodProblem(ExampleRecord(name));
    Listener nobody;
    const Iterate best = Solve(problem, nobody, [] { return false; }).best;
    const TransferFunction h(problem, {best.parameters.begin(), best.parameters.end()});
    ASSERT_TRUE(h.IsFinite());
    EXPECT_EQ(h.Gain(), best.fit.gain);
    EXPECT_EQ(h.Cost(), best.fit.cost);

    const PassbandFit fit = h.Passband();
    const std::vector<double> drawn = h.Obtained(fit.frequency);
    double squares = 0;
    for (std::size_t i = 0; i < drawn.size(); ++i) {
      EXPECT_NEAR(fit.obtained[i], drawn[i], 1e-12);
      if (!std::isnan(fit.decibels[i])) {
        EXPECT_NEAR(fit.decibels[i], 20 * std::log10(drawn[i] / fit.yout[i]), 1e-9);
      }
      squares += fit.weighted[i] * fit.weighted[i];
    }
    EXPECT_NEAR(squares / static_cast<double>(drawn.size()) / best.fit.meanSquare, 1, 1e-9);
    if (!h.WantsDelay()) continue;
    const DelayFit delay = h.DelayPoints();
    const std::vector<double> own = h.GroupDelays(delay.frequency);
    for (std::size_t i = 0; i < own.size(); ++i) {
      EXPECT_NEAR(delay.total[i], delay.tx[i] + own[i], 1e-9);
      EXPECT_NEAR(delay.error[i] - delay.error[0], delay.total[i] - delay.total[0], 1e-9);
    }
  }
}

/// Every kind of factor; the sigma zero's kind by the answers to 10 to 10c.
ResponseRecord EveryKind(const std::string& sigmaZero) {
  return ExampleRecord("Ex-Delay.101",
                       "6=2 8; 7=.8 .8; 8=.5 .4 .3 .6 .7 .2 .35 .9; 9=.3 .7 1.1 .2 .9 .5 1 0; "
                       "11=1 1 1; 11a=1.2; 11b=-.2 .9; 11c=1.3 .4; " +
                           sigmaZero);
}

const char* const kSigmaZeros[] = {
    "10=N", "10a=-.5; 10c=N", "10a=.5; 10c=N", "10a=.5; 10b=Y; 10c=N", "10a=.5", "10a=.5; 10b=Y"};

TEST(TransferFunction, HasADelayThatIsTheSlopeOfItsPhase) {
  for (const char* const zero : kSigmaZeros) {
    const Problem problem = GoodProblem(EveryKind(zero));
    const TransferFunction h(problem);
    EXPECT_NEAR(h.Phases({0})[0], 0, 1e-12);
    // The phase jumps at the omega-axis zero, 12 MHz.
    for (double f = .05; f < 30; f += f < 11.8 || f > 12.2 ? .1 : .5) {
      const double d = 1e-5;
      const std::vector<double> phases = h.Phases({f - d, f + d});
      const double slope = -(phases[1] - phases[0]) / (2 * d) / 360 * 1000;
      EXPECT_NEAR(h.GroupDelays({f})[0], slope, 1e-4) << zero << ", " << f << " MHz";
    }
    EXPECT_NEAR(h.Phases({12.0001})[0] - h.Phases({11.9999})[0], 180, .1);
  }
}

/// H(s) with the gain, s normalised, from the locations.
Complex DirectH(const TransferFunction& h, Complex s) {
  Complex value = h.Gain();
  for (const Location& at : h.Locations()) {
    const auto root = [&](double real) {
      const Complex place(real, at.imaginary);
      return at.imaginary == 0 &&
                     !(at.kind == FactorKind::polePair || at.kind == FactorKind::zeroPair ||
                       at.kind == FactorKind::zeroQuad)
                 ? 1.0 - s / place
                 : (1.0 - s / place) * (1.0 - s / std::conj(place));
    };
    Complex factor = root(at.real);
    if (at.onBothSides && !at.bringsPole) factor *= root(-at.real);
    if (at.bringsPole) factor /= root(-at.real);
    value *= at.IsPole() ? 1.0 / factor : at.multiplicity == 2 ? factor * factor : factor;
  }
  return value;
}

/// The inverse Laplace transform of H(s)/s at t (J. Abate and W. Whitt, ORSA J. Computing 7 (1995)
/// 36: the Fourier series with Euler's summation).
double InverseAt(const TransferFunction& h, double t) {
  constexpr int kTerms = 400;
  constexpr int kMeans = 14;
  constexpr double kDecay = 22;
  const double pi = std::acos(-1.0);
  const auto term = [&](int k) {
    const Complex s(kDecay / (2 * t), k * pi / t);
    return (DirectH(h, s) / s).real() * (k % 2 == 0 ? 1 : -1);
  };
  double sum = term(0) / 2;
  for (int k = 1; k <= kTerms; ++k) sum += term(k);
  double mean = 0;
  double weight = std::pow(.5, kMeans);
  for (int k = 0; k <= kMeans; ++k) {
    mean += weight * sum;
    weight *= static_cast<double>(kMeans - k) / (k + 1);
    sum += term(kTerms + 1 + k);
  }
  return std::exp(kDecay / 2) / t * mean;
}

TEST(StepResponse, IsTheInverseTransformOfEveryKindOfFactor) {
  for (const char* const zero : kSigmaZeros) {
    SCOPED_TRACE(zero);
    const Problem problem = GoodProblem(EveryKind(zero));
    const TransferFunction h(problem);
    const double second = 1000 / (2 * std::acos(-1.0) * h.FreqNorm());  // normalised, in ns
    const StepResponse step = StepResponseOf(h, .2 * second, 75);
    EXPECT_EQ(step.jump, 0);
    for (std::size_t i = 1; i < step.values.size(); ++i) {
      EXPECT_NEAR(step.values[i] / h.Gain(), InverseAt(h, .2 * static_cast<double>(i)) / h.Gain(),
                  2e-5)
          << "step " << i;
    }
  }
}

TEST(StepResponse, JumpsWhereThereAreAsManyZerosAsPolesAndSettlesAtTheGain) {
  // The high-frequency end of H is the product of the squares of the poles over the zeros.
  const Problem equal =
      GoodProblem(ExampleRecord("Ex-Zpair.1", "6=0 1; 8=.5; 9=1; 10=N; 11=0 1 0; 11b=.3; 11c=2"));
  const StepResponse jumping = SettledStepResponse(TransferFunction(equal), 300);
  EXPECT_NEAR(jumping.jump / jumping.final, (.25 + 1) / (.09 + 4), 1e-12);
  EXPECT_NEAR(jumping.values[0], jumping.jump, 1e-12);
  // Sigma-axis poles alone have no section of their own for a pair of zeros.
  const Problem real = GoodProblem(
      ExampleRecord("Ex-Zpair.1", "6=3 0; 7=.5 1 2; 10=Y; 10a=.7; 11=0 1 0; 11b=.3; 11c=2"));
  for (const Problem* const problem : {&equal, &real}) {
    const StepResponse settled = SettledStepResponse(TransferFunction(*problem), 300);
    EXPECT_NEAR(settled.values.back() / settled.final, 1, .02);
    EXPECT_GT(settled.jump, 0);
  }
}

TEST(TransferFunction, InterpolatesYinInDecibelsAndOnlyBetweenThePoints) {
  ResponseRecord record = ExampleRecord("Ex-Zpair.1");
  record.nFreqPoints = 3;
  const char* const rows[][3] = {
      {"4", "4", "1"}, {"0", "1", "1"}, {"8", "0", "1"}};  // not in order
  for (int row = 1; row <= 3; ++row) {
    for (int column = 1; column <= 3; ++column) {
      record.passband.At(row, column) = rows[row - 1][column - 1];
    }
  }
  const Problem problem = GoodProblem(record);
  const TransferFunction h(problem);
  const std::vector<double> yin = h.Inputs({-1, 0, 2, 4, 6, 8, 8.1});
  EXPECT_TRUE(std::isnan(yin[0]) && std::isnan(yin[6]));
  EXPECT_NEAR(yin[2], 2, 1e-12);  // half the way in dB
  EXPECT_NEAR(yin[4], 2, 1e-12);  // half the way to 0
  EXPECT_EQ(h.Obtained({8})[0], 0);
}

TEST(TransferFunction, StandsWithoutPointsWithTheTypedGain) {
  ResponseRecord record = ExampleRecord("Ex-Yzero.101", "12=2.5");
  record.nFreqPoints = 0;
  std::vector<Finding> findings;
  const auto problem = ReadSharedConstellation(record, findings);
  ASSERT_FALSE(HasFault(findings));
  const TransferFunction h(*problem);
  EXPECT_FALSE(h.HasPoints() || h.IsFinite());
  EXPECT_NEAR(h.Magnitudes({0})[0], 2.5, 1e-12);
}

}  // namespace
}  // namespace polefit::testing

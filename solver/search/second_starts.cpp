#include "solver/search/second_starts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace polefit {

using Eigen::VectorXd;

namespace {

/// Poles on a quarter of an ellipse around 0, or on a line parallel to the omega axis.
struct Shape {
  double realSize;
  double topImaginary;
  bool isEllipse;
};

/// Low-pass filters from slow and damped to fast and resonant; no one of them suits every problem.
constexpr std::array<Shape, 8> kShapes = {{{.35, .95, true},
                                           {.3, 1.05, false},
                                           {.6, 1, true},
                                           {.15, 1.05, true},
                                           {.5, .8, false},
                                           {.25, 1.2, true},
                                           {.8, 1.2, true},
                                           {.12, .95, false}}};

int CountOf(const Constellation& constellation, FactorKind kind) {
  return static_cast<int>(
      std::count_if(constellation.factors.begin(), constellation.factors.end(),
                    [kind](const Factor& factor) { return factor.kind == kind; }));
}

}  // namespace

double RandomNumbers::Unit() {
  state_ = 1664525U * state_ + 1013904223U;
  return (static_cast<double>(state_) + 0.5) / 4294967296.0;
}

double RandomNumbers::Logarithmic(double low, double high) {
  return low * std::pow(high / low, Unit());
}

VectorXd SecondStarts::Next(const VectorXd& best, StartKind& kind) {
  constexpr std::array<double, 3> kSizes = {.4, .8, 1.2};
  const int round = count_ / 3;
  VectorXd parameters = best;
  switch (count_++ % 3) {
    case 0:
      kind = StartKind::standard;
      PlaceStandard(parameters, round);
      break;
    case 1:
      kind = StartKind::perturbed;
      Perturb(parameters, kSizes[static_cast<std::size_t>(round) % kSizes.size()]);
      break;
    default:
      kind = StartKind::random;
      Scatter(parameters, round % 2 == 1);
  }
  return parameters;
}

void SecondStarts::PlaceStandard(VectorXd& parameters, int number) const {
  constexpr double kQuarter = std::numbers::pi / 2;
  const Shape& shape = kShapes[static_cast<std::size_t>(number) % kShapes.size()];
  const int pairs = CountOf(problem_.constellation, FactorKind::polePair);
  int pair = 0;
  int single = 0;
  for (const Factor& factor : problem_.constellation.factors) {
    if (factor.kind == FactorKind::polePair) {
      const double share = (pair++ + 0.5) / pairs;
      const double angle = kQuarter * share;
      parameters[factor.parameter] = shape.realSize * (shape.isEllipse ? std::cos(angle) : 1);
      parameters[factor.parameter + 1] =
          shape.topImaginary * (shape.isEllipse ? std::sin(angle) : share);
    } else if (factor.kind == FactorKind::sigmaPole) {
      parameters[factor.parameter] = shape.realSize * (1 + 0.5 * single++);
    }
  }
  if (number % 2 == 1) SpreadZeros(parameters);
}

/// Zeros all over where they may be: omega-axis zeros evenly in the logarithm, pairs along the
/// axis.
void SecondStarts::SpreadZeros(VectorXd& parameters) const {
  const auto share = [this](FactorKind kind, int& number) {
    return (number++ + 0.5) / CountOf(problem_.constellation, kind);
  };
  int omega = 0;
  int pair = 0;
  int quad = 0;
  for (const Factor& factor : problem_.constellation.factors) {
    if (!problem_.constellation.IsOrcas(factor)) continue;
    double& location = parameters[factor.parameter];
    switch (factor.kind) {
      case FactorKind::sigmaZero:
        location = .5;
        break;
      case FactorKind::omegaZero:
        location = std::pow(problem_.largest, share(factor.kind, omega));
        break;
      case FactorKind::zeroPair:
        location = .15;
        parameters[factor.parameter + 1] = problem_.largest * share(factor.kind, pair);
        break;
      case FactorKind::zeroQuad:
        location = .4;
        parameters[factor.parameter + 1] = 0.4 * quad++;
        break;
      default:
        break;
    }
  }
}

/// A pole far outside has lost its influence, and perturbing it changes nothing; it is brought back
/// to the band.
void SecondStarts::Perturb(VectorXd& parameters, double size) {
  constexpr double kFarPole = 2.5;
  for (const Factor& factor : problem_.constellation.factors) {
    if (!problem_.constellation.IsOrcas(factor)) continue;
    double& location = parameters[factor.parameter];
    if (factor.kind == FactorKind::omegaZero) {
      location = 1 + (location - 1) * std::exp(size * random_.Signed());
      continue;
    }
    location *= std::exp(size * random_.Signed());
    if (!factor.IsPair()) continue;
    double& imaginary = parameters[factor.parameter + 1];
    imaginary = std::abs(imaginary + 0.5 * size * random_.Signed());
    const bool isFar = std::hypot(location, imaginary) > kFarPole ||
                       std::max(location, imaginary) >= problem_.largest;
    if (factor.kind == FactorKind::polePair && isFar) {
      location = .08 + .4 * random_.Unit();
      imaginary = 1.2 * random_.Unit();
    }
  }
}

/// Anywhere where poles and zeros of filters usually are; every second time with zeros up to
/// question 14, where stopbands end that reach far.
void SecondStarts::Scatter(VectorXd& parameters, bool isWide) {
  const double low = std::max(problem_.lowest, .03);
  const double high = std::max(2 * low, std::min(problem_.largest, 2.0));
  for (const Factor& factor : problem_.constellation.factors) {
    if (!problem_.constellation.IsOrcas(factor)) continue;
    double& location = parameters[factor.parameter];
    if (factor.kind == FactorKind::omegaZero) {
      const double u = random_.Unit();
      location = isWide ? std::pow(problem_.largest, u) : 1 + 2 * u * u;
      continue;
    }
    location = random_.Logarithmic(low, high);
    if (!factor.IsPair()) continue;
    const double zeroTop = isWide && factor.kind == FactorKind::zeroPair ? problem_.largest : 3;
    const double top = factor.kind == FactorKind::polePair ? 1.3 : zeroTop;
    parameters[factor.parameter + 1] = top * random_.Unit();
  }
}

}  // namespace polefit

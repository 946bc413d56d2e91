#include "solver/search/scaling.h"

#include <algorithm>
#include <cmath>

namespace polefit {

using Eigen::ArrayXd;
using Eigen::VectorXd;

namespace {

/// How far along the omega axis |H| and the delay count.
double EndOfBand(const Problem& problem) {
  if (problem.Equalises()) return problem.largest;
  const double passband = problem.rows.frequencies.maxCoeff();
  if (problem.rows.delayFrequencies.size() == 0) return passband;
  return std::max(passband, problem.rows.delayFrequencies.maxCoeff());
}

}  // namespace

ArrayXd Scales(const Problem& problem, const VectorXd& parameters) {
  constexpr double kLeast = 1e-3;
  constexpr double kOmegaZeroShare = 0.3;
  const double end = EndOfBand(problem);
  ArrayXd scales(problem.constellation.orcaCount);
  for (const Factor& factor : problem.constellation.factors) {
    if (!problem.constellation.IsOrcas(factor)) continue;
    const double location = parameters[factor.parameter];
    const bool isOmega = factor.kind == FactorKind::omegaZero;
    double scale = isOmega ? kOmegaZeroShare * location : location;
    if (factor.IsPair()) {
      const double beyond = parameters[factor.parameter + 1] - end;
      if (beyond > 0) scale = std::hypot(location, beyond);
      scales[factor.parameter + 1] = std::max(kLeast, scale);
    }
    scales[factor.parameter] = std::max(kLeast, scale);
  }
  return scales;
}

StepModels ScaledModels(const Fit& fit, const ArrayXd& scales) {
  const auto diagonal = scales.matrix().asDiagonal();
  return {scales * fit.gradient.array(),
          {diagonal * fit.hessian * diagonal, diagonal * fit.gaussNewton * diagonal}};
}

}  // namespace polefit

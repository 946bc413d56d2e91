#include "solver/search/endings.h"

#include <algorithm>
#include <cmath>

#include "solver/model/model.h"

namespace polefit {

using Eigen::ArrayXd;

namespace {

/// Distances, as parts of a zero's or a bound's size, that count as none.
constexpr double kMet = 1e-3;
constexpr double kAtEnd = 1e-5;
constexpr double kOnSigmaAxis = 1e-4;
/// An rms error, as a part of the largest Yout or of a period of Freq Norm, that no user asks
/// about.
constexpr double kTinyError = 1e-7;

}  // namespace

double RoundingCost(const Problem& problem, const Iterate& iterate) {
  const DataRows& rows = problem.rows;
  const ArrayXd obtained =
      iterate.fit.gain * Magnitudes(problem.constellation, iterate.parameters, rows.frequencies);
  const ArrayXd ofOutput = rows.weights * problem.youtUnit;
  const ArrayXd ofInput = rows.weights * problem.yinUnit * obtained;
  double cost = rows.magnitudeWeight * (ofOutput.square() + ofInput.square()).mean();
  if (problem.wantsDelay) cost += (rows.delayLevels * problem.txUnit).square().mean();
  return cost / 12;
}

EndReason JudgedEnding(EndReason ending, const Problem& problem, const Iterate& answer,
                       double roundingCost) {
  if (ending != EndReason::stepsLim && ending != EndReason::evalMax) return ending;
  if (answer.Cost() <= 2 * roundingCost) return EndReason::finerThanTyped;
  // Small weights make small errors of large ones.
  const double tiny = kTinyError * std::min(1.0, problem.rows.targets.maxCoeff());
  const bool isTiny =
      std::sqrt(answer.fit.meanSquare) < tiny && std::sqrt(answer.fit.delayMeanSquare) < kTinyError;
  return isTiny ? EndReason::tinyError : ending;
}

bool IsLastZeroAtBound(const Problem& problem, const Iterate& iterate) {
  if (!problem.Equalises()) return false;
  const double last = iterate.parameters[problem.constellation.MovedCount() - 1];
  return last > (1 - kAtEnd) * problem.largest;
}

std::vector<std::vector<std::size_t>> MetZeros(const Problem& problem, const Iterate& iterate) {
  const std::vector<Factor>& factors = problem.constellation.factors;
  const auto location = [&](std::size_t index) {
    return iterate.parameters[factors[index].parameter];
  };
  std::vector<std::size_t> zeros;
  for (std::size_t i = 0; i < factors.size(); ++i) {
    const bool isFree =
        factors[i].kind == FactorKind::omegaZero && problem.constellation.IsOrcas(factors[i]);
    if (isFree && location(i) < (1 - kMet) * problem.largest) zeros.push_back(i);
  }
  std::sort(zeros.begin(), zeros.end(),
            [&](std::size_t one, std::size_t other) { return location(one) < location(other); });
  std::vector<std::vector<std::size_t>> groups;
  for (std::size_t k = 0; k < zeros.size(); ++k) {
    const bool hasMet =
        k > 0 && location(zeros[k]) - location(zeros[k - 1]) < kMet * location(zeros[k]);
    if (!hasMet) groups.emplace_back();
    groups.back().push_back(zeros[k]);
  }
  std::erase_if(groups, [](const auto& group) { return group.size() < 2; });
  return groups;
}

std::vector<std::size_t> PairsOnSigmaAxis(const Problem& problem, const Iterate& iterate) {
  std::vector<std::size_t> pairs;
  for (std::size_t i = 0; i < problem.constellation.factors.size(); ++i) {
    const Factor& factor = problem.constellation.factors[i];
    if (factor.kind != FactorKind::polePair) continue;
    const double real = iterate.parameters[factor.parameter];
    if (iterate.parameters[factor.parameter + 1] < kOnSigmaAxis * real) pairs.push_back(i);
  }
  return pairs;
}

}  // namespace polefit

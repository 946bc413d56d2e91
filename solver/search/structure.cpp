#include "solver/search/structure.h"

#include <algorithm>

namespace polefit {

using Eigen::VectorXd;

namespace {

/// The zeros lie left of the omega axis where they can choose.
Factor FactorOf(FactorKind kind) {
  switch (kind) {
    case FactorKind::sigmaPole:
    case FactorKind::polePair:
      return {kind, 0, -1, 1};
    case FactorKind::omegaZero:
      return {kind, 0, 1, 0};
    case FactorKind::zeroQuad:
      return {kind, 0, 2, 0};
    default:
      return {kind, 0, 1, -1};
  }
}

int& CountFor(Problem& problem, FactorKind kind) {
  switch (kind) {
    case FactorKind::sigmaPole:
      return problem.poleCounts[0];
    case FactorKind::polePair:
      return problem.poleCounts[1];
    case FactorKind::omegaZero:
      return problem.zeroCounts[0];
    case FactorKind::zeroPair:
      return problem.zeroCounts[1];
    case FactorKind::zeroQuad:
      return problem.zeroCounts[2];
    default:
      return problem.sigmaZeros;
  }
}

/// Gathers parameters with their bounds.
class Rebuild {
 public:
  Rebuild(const Problem& problem, const Iterate& iterate) : old_(problem), iterate_(iterate) {
    built_ = problem;
    built_.constellation = {};
    built_.isRightHalf.clear();
    built_.isFromPoints.clear();
  }

  void Keep(std::size_t index) {
    Factor factor = old_.constellation.factors[index];
    const auto size = static_cast<Eigen::Index>(factor.Parts());
    const VectorXd values = iterate_.parameters.segment(factor.parameter, size);
    const int former = factor.parameter;
    factor.parameter = static_cast<int>(values_.size());
    if (former < old_.constellation.orcaCount) {
      Append(lower_, old_.lower.segment(former, size));
      Append(upper_, old_.upper.segment(former, size));
      built_.constellation.orcaCount += static_cast<int>(size);
    } else {
      const bool isEqualised = former < old_.constellation.MovedCount();
      ++(isEqualised ? built_.constellation.lynxCount : built_.constellation.heldCount);
    }
    Add(factor, values, old_.isRightHalf[index]);
  }

  void AddNew(const NewFactor& added) {
    Factor factor = FactorOf(added.kind);
    factor.parameter = static_cast<int>(values_.size());
    const auto size = static_cast<Eigen::Index>(factor.Parts());
    const VectorXd values = Eigen::Vector2d(added.location, added.imaginary).head(size);
    const double least = added.kind == FactorKind::omegaZero ? 1 : old_.lowest;
    Append(lower_, Eigen::Vector2d(least, 0).head(size));
    Append(upper_, VectorXd::Constant(size, old_.largest));
    built_.constellation.orcaCount += static_cast<int>(size);
    ++CountFor(built_, added.kind);
    Add(factor, values, false);
  }

  void CountOut(std::size_t index) { --CountFor(built_, old_.constellation.factors[index].kind); }

  Problem Result() {
    built_.typedParameters = VectorXd::Map(values_.data(), std::ssize(values_));
    built_.lower = VectorXd::Map(lower_.data(), std::ssize(lower_));
    built_.upper = VectorXd::Map(upper_.data(), std::ssize(upper_));
    return built_;
  }

 private:
  static void Append(std::vector<double>& list, const VectorXd& values) {
    list.insert(list.end(), values.begin(), values.end());
  }

  void Add(const Factor& factor, const VectorXd& values, bool isRightHalf) {
    built_.constellation.factors.push_back(factor);
    built_.isRightHalf.push_back(isRightHalf);
    built_.isFromPoints.push_back(false);
    Append(values_, values);
  }

  const Problem& old_;
  const Iterate& iterate_;
  Problem built_;
  std::vector<double> values_;
  std::vector<double> lower_;
  std::vector<double> upper_;
};

}  // namespace

Problem Restructured(const Problem& problem, const Iterate& iterate,
                     const std::vector<std::size_t>& removed, const std::vector<NewFactor>& added) {
  Rebuild rebuild(problem, iterate);
  const std::vector<Factor>& factors = problem.constellation.factors;
  const auto isRemoved = [&removed](std::size_t i) {
    return std::find(removed.begin(), removed.end(), i) != removed.end();
  };
  // ORCA's parameters come first, then LYNX's, ascending, then the held ones.
  std::vector<std::size_t> kept;
  for (std::size_t i = 0; i < factors.size(); ++i) {
    isRemoved(i) ? rebuild.CountOut(i) : kept.push_back(i);
  }
  std::stable_sort(kept.begin(), kept.end(), [&factors](std::size_t one, std::size_t other) {
    return factors[one].parameter < factors[other].parameter;
  });
  const auto isOrcas = [&](std::size_t i) { return problem.constellation.IsOrcas(factors[i]); };
  for (const std::size_t i : kept) {
    if (isOrcas(i)) rebuild.Keep(i);
  }
  for (const NewFactor& factor : added) rebuild.AddNew(factor);
  for (const std::size_t i : kept) {
    if (!isOrcas(i)) rebuild.Keep(i);
  }
  return rebuild.Result();
}

}  // namespace polefit

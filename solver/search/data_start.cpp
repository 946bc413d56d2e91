#include "solver/search/data_start.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <limits>

#include "solver/search/lynx.h"
#include "solver/search/rational_fit.h"
#include "solver/search/root_allotment.h"

namespace polefit {

using Eigen::ArrayXd;
using Eigen::Index;
using Eigen::VectorXd;

namespace {

/// Beyond so many rows every k-th will do.
constexpr Index kEnoughRows = 2000;
/// Rows on a null of the known factors tell nothing.
constexpr double kLeastBase = 1e-12;
/// When equal sidelobes and poles have been fitted in turn so often without gain, that is all.
constexpr int kMisses = 3;
constexpr double kEqualised = 1e-9;

/// How often a factor's root stands in N or D, a polynomial in w^2.
int DegreeOf(const Factor& factor) {
  const int count = std::abs(factor.logCount);
  return factor.kind == FactorKind::omegaZero ? 2 : factor.IsPair() ? 2 * count : count;
}

/// |H|^2 of the omega-axis zeros that are not fitted.
ArrayXd BaseAt(const Problem& problem, const VectorXd& parameters, const ArrayXd& x) {
  ArrayXd base = ArrayXd::Ones(x.size());
  for (const Factor& factor : problem.constellation.factors) {
    if (problem.constellation.IsOrcas(factor)) continue;
    const double zero = parameters[factor.parameter];
    base *= (1 - x / (zero * zero)).square();
  }
  return base;
}

/// The rows that tell something, at most kEnoughRows.
SquaredMagnitude RowsOf(const Problem& problem, const VectorXd& parameters) {
  const ArrayXd& frequencies = problem.rows.frequencies;
  const ArrayXd base = BaseAt(problem, parameters, frequencies.square());
  std::vector<Index> taken;
  const Index each = (frequencies.size() + kEnoughRows - 1) / kEnoughRows;
  for (Index i = 0; i < frequencies.size(); i += each) {
    if (problem.rows.inputs[i] != 0 && base[i] >= kLeastBase) taken.push_back(i);
  }
  const ArrayXd inputs = problem.rows.inputs(taken);
  return {frequencies(taken).square(), problem.rows.targets(taken) / inputs, inputs, base(taken)};
}

/// Hands the roots of |H|^2 out to the factors.
class Placement {
 public:
  Placement(const Problem& problem, const VectorXd& parameters, const RationalFit& fit)
      : problem_(problem), poles_(PolesOf(problem, fit)), zeros_(ZerosOf(problem, fit)) {
    start_.parameters = parameters;
    start_.isPlaced.assign(problem.constellation.factors.size(), false);
  }

  DataStart Place() {
    for (std::size_t i = 0; i < problem_.constellation.factors.size(); ++i) {
      const Factor& factor = problem_.constellation.factors[i];
      if (!problem_.constellation.IsOrcas(factor) || factor.logCount == 0) continue;
      PlaceFactor(factor);
      start_.isPlaced[i] = true;
    }
    auto variables = start_.parameters.head(problem_.constellation.orcaCount);
    variables = variables.cwiseMax(problem_.lower).cwiseMin(problem_.upper).eval();
    return start_;
  }

 private:
  static AllottedRoots PolesOf(const Problem& problem, const RationalFit& fit) {
    return AllotRoots(RootsInS(fit.poles), problem.poleCounts[0], problem.poleCounts[1]);
  }

  static AllottedZeros ZerosOf(const Problem& problem, const RationalFit& fit) {
    ZeroCounts counts;
    for (const Factor& factor : problem.constellation.factors) {
      if (!problem.constellation.IsOrcas(factor)) continue;
      if (factor.kind == FactorKind::omegaZero) ++counts.omega;
      if (factor.kind == FactorKind::sigmaZero) counts.sigma = factor.logCount;
    }
    counts.pairs = problem.zeroCounts[1];
    counts.quads = problem.zeroCounts[2];
    return AllotZeros(fit.zeros, counts);
  }

  void PlaceFactor(const Factor& factor) {
    double& location = start_.parameters[factor.parameter];
    switch (factor.kind) {
      case FactorKind::sigmaPole:
        location = poles_.singles[singles_++];
        break;
      case FactorKind::omegaZero:
        location = zeros_.omega[omegas_++];
        break;
      case FactorKind::sigmaZero:
        location = zeros_.sigma;
        break;
      case FactorKind::polePair:
        PlacePair(factor, poles_.pairs[pairs_++]);
        break;
      case FactorKind::zeroPair:
        PlacePair(factor, zeros_.pairs[zeroPairs_++]);
        break;
      case FactorKind::zeroQuad:
        PlacePair(factor, zeros_.quads[quads_++]);
        break;
    }
  }

  void PlacePair(const Factor& factor, const std::complex<double>& root) {
    start_.parameters[factor.parameter] = root.real();
    start_.parameters[factor.parameter + 1] = root.imag();
  }

  const Problem& problem_;
  AllottedRoots poles_;
  AllottedZeros zeros_;
  DataStart start_;
  std::size_t singles_ = 0;
  std::size_t pairs_ = 0;
  std::size_t omegas_ = 0;
  std::size_t zeroPairs_ = 0;
  std::size_t quads_ = 0;
};

/// Fits all locations but the zeros that are held or equalised, which stay as they are.
std::optional<DataStart> FitFrom(const Problem& problem, const VectorXd& parameters) {
  int zeroDegree = 0;
  int poleDegree = 0;
  for (const Factor& factor : problem.constellation.factors) {
    if (!problem.constellation.IsOrcas(factor)) continue;
    (factor.logCount < 0 ? poleDegree : zeroDegree) += DegreeOf(factor);
  }
  const SquaredMagnitude rows = RowsOf(problem, parameters);
  if (rows.x.size() < zeroDegree + poleDegree + 2 || !(rows.x.maxCoeff() > 0)) return std::nullopt;
  const RationalFit fit = FitRational(rows, zeroDegree, poleDegree);
  if (!std::isfinite(fit.meanSquare)) return std::nullopt;
  DataStart start = Placement(problem, parameters, fit).Place();
  if (!start.parameters.allFinite()) return std::nullopt;
  return start;
}

/// Equal sidelobes for the poles and poles for the zeros of the sidelobes, in turn, until the zeros
/// stay or the fit no longer gets better.
DataStart WithEqualSidelobes(const Problem& problem, const DataStart& first) {
  Listener nobody;
  Lynx lynx(problem.constellation, problem.largest, problem.options, nobody);
  Objective objective(problem.constellation, problem.rows);
  Fit fit;
  DataStart best = first;
  double least = std::numeric_limits<double>::infinity();
  std::optional<DataStart> next = first;
  for (int misses = 0; next && misses < kMisses; next = FitFrom(problem, next->parameters)) {
    const VectorXd former = next->parameters;
    if (!lynx.Equalise(next->parameters)) break;
    if (!objective.EvaluateErrors(next->parameters, fit)) break;
    misses = fit.cost < least ? 0 : misses + 1;
    if (misses == 0) {
      best = *next;
      least = fit.cost;
    }
    const double moved = (next->parameters - former).cwiseAbs().maxCoeff();
    if (moved < kEqualised) break;
  }
  return best;
}

}  // namespace

std::optional<DataStart> FindDataStart(const Problem& problem) {
  std::optional<DataStart> start = FitFrom(problem, problem.typedParameters);
  if (!start || !problem.Equalises()) return start;
  return WithEqualSidelobes(problem, *start);
}

void FillFromPoints(Problem& problem, std::vector<Finding>& findings) {
  const std::vector<bool>& isEmpty = problem.isFromPoints;
  if (std::find(isEmpty.begin(), isEmpty.end(), true) == isEmpty.end()) return;
  const std::optional<DataStart> start = FindDataStart(problem);
  bool isWhole = start.has_value();
  bool isRough = false;
  for (std::size_t i = 0; i < isEmpty.size(); ++i) {
    const Factor& factor = problem.constellation.factors[i];
    const bool isPlaced = start && start->isPlaced[i];
    if (problem.constellation.IsOrcas(factor) && !(isEmpty[i] && isPlaced)) isWhole = false;
    if (!isEmpty[i] || !problem.constellation.IsOrcas(factor)) continue;
    isRough = isRough || !start;
    if (!isPlaced) continue;
    const auto size = static_cast<Index>(factor.Parts());
    problem.typedParameters.segment(factor.parameter, size) =
        start->parameters.segment(factor.parameter, size);
  }
  problem.startsFromPoints = isWhole;
  if (!isRough) return;
  Finding rough;
  rough.severity = Severity::warning;
  rough.text = "The points do not tell the empty starting values; rough ones are taken.";
  findings.push_back(rough);
}

}  // namespace polefit

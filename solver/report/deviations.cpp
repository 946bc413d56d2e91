#include "solver/report/deviations.h"

#include <Eigen/Eigenvalues>
#include <Eigen/LU>
#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "solver/model/model.h"

namespace polefit {

namespace {

using Eigen::Index;
using Eigen::MatrixXd;
using Eigen::VectorXd;

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

/// The errors of one kind of rows and their derivatives by all moved parameters and one constant:
/// the gain, or T0.
struct Errors {
  VectorXd values;
  MatrixXd derivatives;
  int withWeight = 0;

  Errors(Index rows, Index columns)
      : values(VectorXd::Zero(rows)), derivatives(MatrixXd::Zero(rows, columns)) {}

  double MeanSquare() const { return withWeight > 0 ? values.squaredNorm() / withWeight : 0; }
};

/// Works through frequencies in chunks: `use(first row, rows, frequencies)`.
template <typename Use>
void ForChunks(const Eigen::ArrayXd& frequencies, Use use) {
  for (Index first = 0; first < frequencies.size(); first += kChunkRows) {
    const Index rows = std::min<Index>(kChunkRows, frequencies.size() - first);
    Chunk chunk{};
    std::copy_n(frequencies.data() + first, rows, chunk.begin());
    use(first, static_cast<std::size_t>(rows), chunk);
  }
}

/// Fills the columns of one chunk's rows with what `derive` gives for each moved factor.
template <typename Derive>
void DeriveRows(const Problem& problem, const Iterate& iterate, Derive derive,
                const Eigen::ArrayXd& frequencies, MatrixXd& derivatives) {
  std::vector<PlacedFactor> factors;
  Place(problem.constellation, iterate.parameters, factors);
  FactorDerivatives<Chunk> found;
  ForChunks(frequencies, [&](Index first, std::size_t rows, const Chunk& w) {
    for (const PlacedFactor& factor : factors) {
      if (factor.parameter >= problem.constellation.MovedCount()) continue;
      derive(factor, rows, w, found);
      for (std::size_t part = 0; part < factor.Parts(); ++part) {
        const auto column = static_cast<Index>(factor.Parameter(part));
        derivatives.col(column).segment(first, static_cast<Index>(rows)) =
            Eigen::Map<const VectorXd>(found.first[part].data(), static_cast<Index>(rows));
      }
    }
  });
}

/// e = g a - target; de/dp = g a dln|H|/dp, de/dg = a.
Errors PassbandErrors(const Problem& problem, const Iterate& iterate) {
  const DataRows& rows = problem.rows;
  const int moved = problem.constellation.MovedCount();
  Errors errors(rows.frequencies.size(), moved + 1);
  const double gain = iterate.fit.gain;
  const Eigen::ArrayXd a =
      rows.inputs * Magnitudes(problem.constellation, iterate.parameters, rows.frequencies);
  errors.values = (gain * a - rows.targets).matrix();
  DeriveRows(problem, iterate, DeriveRelative, rows.frequencies, errors.derivatives);
  errors.derivatives.leftCols(moved).array().colwise() *= gain * a;
  errors.derivatives.col(moved) = a.matrix();
  errors.withWeight = static_cast<int>((rows.inputs != 0 || rows.targets != 0).count());
  return errors;
}

/// d = offset + slope t - level T0.
Errors DelayErrors(const Problem& problem, const Iterate& iterate) {
  const DataRows& rows = problem.rows;
  const int moved = problem.constellation.MovedCount();
  Errors errors(rows.delayFrequencies.size(), moved + 1);
  if (!problem.wantsDelay) return errors;
  const Eigen::ArrayXd delays =
      Delays(problem.constellation, iterate.parameters, rows.delayFrequencies);
  errors.values =
      (rows.delayOffsets + rows.delaySlopes * delays - rows.delayLevels * iterate.fit.delayConstant)
          .matrix();
  DeriveRows(problem, iterate, DeriveDelay, rows.delayFrequencies, errors.derivatives);
  errors.derivatives.leftCols(moved).array().colwise() *= rows.delaySlopes;
  errors.derivatives.col(moved) = -rows.delayLevels.matrix();
  errors.withWeight = static_cast<int>((rows.delayLevels != 0).count());
  return errors;
}

/// The parameters that are free to move.
std::vector<Index> FreeParameters(const Problem& problem,
                                  const std::vector<LocationFigures>& locations) {
  std::vector<Index> free;
  for (const LocationFigures& location : locations) {
    if (location.isOwnPole) continue;
    for (const LocationPart* const part : {&location.real, &location.imaginary}) {
      const bool isOrcas =
          part->parameter >= 0 && part->parameter < problem.constellation.orcaCount;
      if (isOrcas && part->bound == Bound::none && part->value != 0)
        free.push_back(part->parameter);
    }
  }
  return free;
}

/// How the moved parameters follow the free ones: each itself, and the equalised zeros u by
/// u' = -inv(R_u) R_x, R the differences of neighbouring peaks of ln|H|.
MatrixXd Followers(const Problem& problem, const Iterate& iterate, const std::vector<Index>& free) {
  const Constellation& constellation = problem.constellation;
  const auto count = static_cast<Index>(free.size());
  MatrixXd basis = MatrixXd::Zero(constellation.MovedCount(), count);
  for (Index i = 0; i < count; ++i) basis(free[static_cast<std::size_t>(i)], i) = 1;
  const Index zeros = constellation.lynxCount;
  if (zeros == 0 || count == 0) return basis;
  MatrixXd differences(zeros, constellation.MovedCount());
  LogDerivatives here, above;
  for (Index k = 0; k < zeros; ++k) {
    const auto peak = static_cast<std::size_t>(k);
    DeriveLogMagnitude(constellation, iterate.parameters, iterate.peaks[peak].frequency, here);
    DeriveLogMagnitude(constellation, iterate.parameters, iterate.peaks[peak + 1].frequency, above);
    differences.row(k) = here.first - above.first;
  }
  const MatrixXd byZeros = differences.rightCols(zeros);
  basis.bottomRows(zeros) = -byZeros.partialPivLu().solve(differences * basis);
  return basis;
}

/// The size of a step in each free parameter: the distance to the omega axis, for an omega-axis
/// zero a part of its frequency.
VectorXd Scales(const Problem& problem, const Iterate& iterate, const std::vector<Index>& free) {
  constexpr double kLeast = 1e-3;
  constexpr double kShareOfOmegaZero = .3;
  VectorXd all = VectorXd::Ones(problem.constellation.ParameterCount());
  for (const Factor& factor : problem.constellation.factors) {
    const double location = iterate.parameters[factor.parameter];
    const double share = factor.kind == FactorKind::omegaZero ? kShareOfOmegaZero : 1;
    for (std::size_t part = 0; part < factor.Parts(); ++part) {
      all[static_cast<Index>(factor.Parameter(part))] = std::max(kLeast, share * location);
    }
  }
  VectorXd scales(static_cast<Index>(free.size()));
  for (Index i = 0; i < scales.size(); ++i) scales[i] = all[free[static_cast<std::size_t>(i)]];
  return scales;
}

/// J'J of one kind of rows by the free numbers, scaled, its own constant eliminated: what the
/// constant can take up of a derivative is taken out of it.
MatrixXd Products(const Errors& errors, const MatrixXd& basis, bool isConstantFree) {
  MatrixXd derivatives = errors.derivatives.leftCols(basis.rows()) * basis;
  const VectorXd constant = errors.derivatives.rightCols<1>();
  const double square = constant.squaredNorm();
  if (isConstantFree && square > 0) {
    derivatives -= constant * (constant.transpose() * derivatives) / square;
  }
  return derivatives.transpose() * derivatives;
}

/// inv(A) B inv(A); empty where A is as good as singular.
MatrixXd Sandwich(const MatrixXd& a, const MatrixXd& b) {
  constexpr double kSingular = 1e-12;
  const Eigen::SelfAdjointEigenSolver<MatrixXd> solver(a);
  const VectorXd& values = solver.eigenvalues();
  if (!(values.minCoeff() > kSingular * values.maxCoeff())) return {};
  const MatrixXd inverse = solver.eigenvectors() * values.cwiseInverse().asDiagonal() *
                           solver.eigenvectors().transpose();
  return inverse * b * inverse;
}

/// Counts runs of equal signs in the order of frequency, and what chance would give. Errors that
/// are small among the others are left out: where noise goes with the level, those of a stopband
/// are what the noise of the passband has shifted the locations by, and of one sign.
struct Runs {
  int count = 0;
  double expected = 0;
  double variance = 0;

  Runs(const Eigen::ArrayXd& frequencies, const VectorXd& errors) {
    constexpr double kLeastShare = 0.1;
    const double least =
        kLeastShare * errors.norm() / std::sqrt(static_cast<double>(errors.size()));
    std::vector<Index> order;
    for (Index i = 0; i < errors.size(); ++i) {
      if (std::abs(errors[i]) > least) order.push_back(i);
    }
    std::stable_sort(order.begin(), order.end(),
                     [&](Index one, Index other) { return frequencies[one] < frequencies[other]; });
    double positive = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
      const bool isPositive = errors[order[i]] > 0;
      if (isPositive) ++positive;
      if (i == 0 || isPositive != (errors[order[i - 1]] > 0)) ++count;
    }
    const auto all = static_cast<double>(order.size());
    if (all < 2) return;
    expected = 1 + 2 * positive * (all - positive) / all;
    variance = (expected - 1) * (expected - 2) / (all - 1);
  }
};

}  // namespace

Trust JudgeTrust(const Problem& problem, const Iterate& iterate,
                 const std::vector<LocationFigures>& locations, double roundingCost) {
  const Errors passband = PassbandErrors(problem, iterate);
  const Errors delay = DelayErrors(problem, iterate);
  const std::vector<Index> free = FreeParameters(problem, locations);
  const bool isConstantFree = problem.wantsDelay && problem.rows.wantedDelay == 0;
  Trust trust;
  trust.deviations = VectorXd::Constant(problem.constellation.ParameterCount(), kNone);
  trust.freeNumbers = static_cast<int>(free.size());
  const int rows = passband.withWeight + delay.withWeight;
  const int numbers = trust.freeNumbers + 1 + (isConstantFree ? 1 : 0);
  trust.freedom = rows - numbers;
  if (trust.freedom <= 0 || free.empty()) return trust;

  constexpr double kLeastCost = 1e-300;
  const VectorXd scales = Scales(problem, iterate, free);
  const MatrixXd followers = Followers(problem, iterate, free);
  const MatrixXd basis = followers * scales.asDiagonal();
  const double correction =
      std::max(1.0, roundingCost / std::max(iterate.Cost(), kLeastCost)) * rows / trust.freedom;
  const auto count = static_cast<Index>(free.size());
  MatrixXd a = MatrixXd::Zero(count, count);
  MatrixXd b = a;
  const auto add = [&](const Errors& errors, double weight, bool hasConstant) {
    if (errors.values.size() == 0) return;
    const MatrixXd products = Products(errors, basis, hasConstant);
    const double c = weight / static_cast<double>(errors.values.size());
    a += c * products;
    b += c * c * errors.MeanSquare() * correction * products;
  };
  add(passband, problem.rows.magnitudeWeight, true);
  add(delay, 1, isConstantFree);
  const MatrixXd covariance = Sandwich(a, b);
  if (covariance.size() == 0) return trust;
  const MatrixXd whole = basis * covariance * basis.transpose();
  for (Index i = 0; i < whole.rows(); ++i) {
    if (whole(i, i) > 0) trust.deviations[i] = std::sqrt(whole(i, i));
  }
  return trust;
}

void AddDeviations(const Trust& trust, std::vector<LocationFigures>& locations) {
  for (LocationFigures& location : locations) {
    for (LocationPart* const part : {&location.real, &location.imaginary}) {
      if (part->parameter >= 0) part->deviation = trust.deviations[part->parameter];
    }
  }
}

ErrorPattern JudgePattern(const Problem& problem, const Iterate& iterate, int freeNumbers,
                          double roundingCost) {
  constexpr int kRowsPerNumber = 4;
  constexpr double kTooFew = -1.96;
  const Errors passband = PassbandErrors(problem, iterate);
  const Errors delay = DelayErrors(problem, iterate);
  const int rows = passband.withWeight + delay.withWeight;
  if (rows < kRowsPerNumber * freeNumbers || iterate.Cost() <= 2 * roundingCost) {
    return ErrorPattern::unknown;
  }
  const Runs magnitude(problem.rows.frequencies, passband.values);
  const Runs ripple(problem.rows.delayFrequencies, delay.values);
  const double variance = magnitude.variance + ripple.variance;
  if (!(variance > 0)) return ErrorPattern::unknown;
  const double excess = magnitude.count + ripple.count - magnitude.expected - ripple.expected;
  return excess < kTooFew * std::sqrt(variance) ? ErrorPattern::systematic : ErrorPattern::random;
}

}  // namespace polefit

#include "solver/objective.h"

#include <algorithm>
#include <cmath>

namespace polefit {

namespace {

using Eigen::ArrayXd;
using Eigen::Index;
using Eigen::VectorXd;

/// Rows `first` to `first` + kLanes of a column, 0 beyond its end.
Rows GroupOf(const ArrayXd& column, Index first) {
  const Index count = std::min<Index>(kLanes, column.size() - first);
  Rows group = Rows::Zero();
  group.head(count) = column.segment(first, count);
  return group;
}

/// The place of a diagonal element in a lower triangle.
std::size_t Diagonal(std::size_t row) {
  return row * (row + 3) / 2;
}

ArrayXd DelayErrorsWithoutConstant(const Constellation& constellation, const DataRows& rows,
                                   const VectorXd& parameters) {
  return rows.delayOffsets +
         rows.delaySlopes * Delays(constellation, parameters, rows.delayFrequencies);
}

/// The constant that makes sum((errors - T0 levels)^2) least.
double BestConstant(const DataRows& rows, const ArrayXd& errors) {
  if (rows.wantedDelay > 0) return rows.wantedDelay;
  return (errors * rows.delayLevels).sum() / rows.delayLevels.square().sum();
}

}  // namespace

void Objective::Sums::Clear(std::size_t size) {
  gradient.assign(size, Rows::Zero());
  cross.assign(size, Rows::Zero());
  products.assign(size * (size + 1) / 2, Rows::Zero());
}

Objective::Objective(const Constellation& constellation, const DataRows& rows,
                     bool wantsGaussNewton)
    : constellation_(constellation),
      rows_(rows),
      wantsGaussNewton_(wantsGaussNewton),
      first_(static_cast<std::size_t>(constellation.MovedCount())),
      isOmegaZero_(first_.size()) {
  for (const Factor& factor : constellation.factors) {
    if (factor.parameter >= constellation.MovedCount()) continue;
    moved_.push_back(factor);
    isOmegaZero_[factor.Parameter(0)] = factor.kind == FactorKind::omegaZero;
  }
  second_.resize(moved_.size());
  for (Index first = 0; first < rows.frequencies.size(); first += kLanes) {
    passband_.push_back({GroupOf(rows.frequencies, first), GroupOf(rows.inputs, first),
                         GroupOf(rows.targets, first), Rows::Zero()});
  }
  for (Index first = 0; first < rows.delayFrequencies.size(); first += kLanes) {
    delays_.push_back({GroupOf(rows.delayFrequencies, first), GroupOf(rows.delayOffsets, first),
                       GroupOf(rows.delaySlopes, first), GroupOf(rows.delayLevels, first),
                       Rows::Zero()});
  }
}

bool Objective::Evaluate(const VectorXd& parameters, Fit& fit) {
  const int size = constellation_.MovedCount();
  fit.cost = 0;
  fit.gradient.setZero(size);
  fit.hessian.setZero(size, size);
  if (wantsGaussNewton_) fit.gaussNewton.setZero(size, size);
  EvaluateMagnitude(parameters, fit);
  if (!delays_.empty()) EvaluateDelay(parameters, fit);
  return std::isfinite(fit.cost) && fit.gain > 0 && fit.gradient.allFinite() &&
         fit.hessian.allFinite();
}

double Objective::CostWithGain(const VectorXd& parameters, double gain) const {
  const ArrayXd a = rows_.inputs * Magnitudes(constellation_, parameters, rows_.frequencies);
  double cost = rows_.magnitudeWeight * (gain * a - rows_.targets).square().mean();
  if (rows_.delayFrequencies.size() > 0) {
    const ArrayXd errors = DelayErrorsWithoutConstant(constellation_, rows_, parameters);
    cost += (errors - BestConstant(rows_, errors) * rows_.delayLevels).square().mean();
  }
  return cost;
}

template <class Derivatives>
void Objective::Derive(Derivatives derivatives) {
  for (std::size_t i = 0; i < moved_.size(); ++i) {
    const FactorDerivatives<Rows> d = derivatives(moved_[i]);
    for (std::size_t part = 0; part < moved_[i].Parts(); ++part) {
      first_[moved_[i].Parameter(part)] = d.first[part];
    }
    second_[i] = d.second;
  }
}

// The gain is linear in the errors and is eliminated (G. Golub and V. Pereyra, SIAM J. Numer.
// Anal. 10 (1973) 413: variable projection). The reduced Hessian is the Schur complement
// F_yy - F_yg F_gy / F_gg. With G the first derivatives of ln a, L the second ones and c = e g a:
//   F_yy = 2/N sum(((ga)^2 + c) G_j G_k + c L_jk), where L is 0 for different factors,
//   and g F_yg = 2/N sum(((ga)^2 + c) G_j).
// An omega-axis zero on a row's frequency makes a 0 and G infinite. All terms above stay finite but
// its own c (G^2 + L); there c S takes its place, S the second derivative of a divided by a.
void Objective::EvaluateMagnitude(const VectorXd& parameters, Fit& fit) {
  const double sumSquare = FindObtained(parameters, fit);
  Rows squares = Rows::Zero();
  Rows largest = Rows::Zero();
  sums_.Clear(first_.size());
  gaussSums_.Clear(first_.size());
  for (const PassbandGroup& group : passband_) {
    const Rows obtained = fit.gain * group.obtained;
    const Rows errors = obtained - group.target;
    squares += errors.square();
    largest = largest.max(errors.abs());
    Derive([&](const Factor& factor) {
      return RelativeDerivatives(factor, parameters, group.frequency);
    });
    Weights weights;
    weights.gradient = errors * obtained;
    weights.square = obtained.square();
    weights.outer = weights.cross = weights.square + weights.gradient;
    AddGroup(weights, sums_);
    if (!wantsGaussNewton_) continue;
    weights.gradient.setZero();
    weights.outer = weights.cross = weights.square;
    AddGroup(weights, gaussSums_);
  }
  const auto rows = static_cast<double>(rows_.frequencies.size());
  fit.meanSquare = squares.sum() / rows;
  fit.largestError = largest.maxCoeff();
  fit.cost = rows_.magnitudeWeight * fit.meanSquare;
  AddDerivatives(2 * rows_.magnitudeWeight / rows, fit.gain * fit.gain * sumSquare, fit);
}

/// The obtained values of all rows and the gain; the result is sum(a^2).
double Objective::FindObtained(const VectorXd& parameters, Fit& fit) {
  Rows squares = Rows::Zero();
  Rows products = Rows::Zero();
  for (PassbandGroup& group : passband_) {
    Rows squared = Rows::Ones();
    for (const Factor& factor : constellation_.factors) {
      MultiplySquare(factor, parameters, group.frequency, squared);
    }
    group.obtained = group.input * squared.sqrt();
    squares += group.obtained.square();
    products += group.obtained * group.target;
  }
  fit.gain = products.sum() / squares.sum();
  return squares.sum();
}

void Objective::EvaluateDelay(const VectorXd& parameters, Fit& fit) {
  FindDelayErrors(parameters, fit);
  sums_.Clear(first_.size());
  gaussSums_.Clear(first_.size());
  Rows squares = Rows::Zero();
  for (const DelayGroup& group : delays_) {
    const Rows errors = group.error - fit.delayConstant * group.level;
    squares += errors.square();
    Derive([&](const Factor& factor) {
      return DelayDerivatives(factor, parameters, group.frequency);
    });
    Weights weights;
    weights.gradient = errors * group.slope;
    weights.square = weights.outer = group.slope.square();
    weights.cross = group.slope * group.level;
    AddGroup(weights, sums_);
    if (!wantsGaussNewton_) continue;
    weights.gradient.setZero();
    AddGroup(weights, gaussSums_);
  }
  const auto rows = static_cast<double>(rows_.delayFrequencies.size());
  fit.delayMeanSquare = squares.sum() / rows;
  fit.cost += fit.delayMeanSquare;
  if (rows_.wantedDelay > 0) {
    sums_.cross.assign(sums_.cross.size(), Rows::Zero());
    gaussSums_.cross = sums_.cross;
  }
  AddDerivatives(2 / rows, rows_.delayLevels.square().sum(), fit);
}

/// The errors of all delay rows without the constant, and the constant.
void Objective::FindDelayErrors(const VectorXd& parameters, Fit& fit) {
  Rows products = Rows::Zero();
  Rows squares = Rows::Zero();
  for (DelayGroup& group : delays_) {
    Rows delay = Rows::Zero();
    for (const Factor& factor : constellation_.factors) {
      AddDelay(factor, parameters, group.frequency, delay);
    }
    group.error = group.offset + group.slope * delay;
    products += group.error * group.level;
    squares += group.level.square();
  }
  fit.delayConstant = rows_.wantedDelay > 0 ? rows_.wantedDelay : products.sum() / squares.sum();
}

void Objective::AddGroup(const Weights& weights, Sums& sums) const {
  auto product = sums.products.begin();
  for (std::size_t row = 0; row < first_.size(); ++row) {
    sums.gradient[row] += weights.gradient * first_[row];
    sums.cross[row] += weights.cross * first_[row];
    const Rows outer = weights.outer * first_[row];
    for (std::size_t column = 0; column < row; ++column) *product++ += outer * first_[column];
    const Rows& own = isOmegaZero_[row] ? weights.square : weights.outer;
    *product++ += own * first_[row].square();
  }
  for (std::size_t i = 0; i < moved_.size(); ++i) {
    const std::size_t row = moved_[i].Parameter(0);
    const Rows second = weights.gradient * second_[i][0];
    sums.products[Diagonal(row)] += second;
    if (!moved_[i].IsPair()) continue;
    sums.products[Diagonal(row + 1)] -= second;
    sums.products[Diagonal(row + 1) - 1] += weights.gradient * second_[i][1];
  }
}

void Objective::AddDerivatives(double scale, double constantSquare, Fit& fit) const {
  for (Index i = 0; i < fit.gradient.size(); ++i) {
    fit.gradient[i] += scale * sums_.gradient[static_cast<std::size_t>(i)].sum();
  }
  AddReduced(sums_, scale, constantSquare, fit.hessian);
  if (wantsGaussNewton_) AddReduced(gaussSums_, scale, constantSquare, fit.gaussNewton);
}

/// Adds the Schur complement by the eliminated constant.
void Objective::AddReduced(const Sums& sums, double scale, double constantSquare,
                           Eigen::MatrixXd& to) {
  VectorXd cross(to.rows());
  for (Index i = 0; i < cross.size(); ++i) cross[i] = sums.cross[static_cast<std::size_t>(i)].sum();
  const VectorXd share = cross / constantSquare;
  auto product = sums.products.begin();
  for (Index row = 0; row < to.rows(); ++row) {
    for (Index column = 0; column <= row; ++column, ++product) {
      to(row, column) += scale * (product->sum() - cross[row] * share[column]);
      to(column, row) = to(row, column);
    }
  }
}

}  // namespace polefit

#include "solver/objective.h"

#include <algorithm>
#include <cmath>

namespace polefit {

namespace {

using Eigen::ArrayXd;
using Eigen::Index;
using Eigen::VectorXd;

/// Calls `work(first, count)` for each block of rows.
template <class Work>
void ForBlocks(Index rows, Work work) {
  for (Index first = 0; first < rows; first += kBlockRows) {
    work(first, std::min<Index>(kBlockRows, rows - first));
  }
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

void Objective::Sums::Clear(int size) {
  gradient.setZero(size);
  cross.setZero(size);
  products.setZero(size, size);
}

Objective::Objective(const Constellation& constellation, const DataRows& rows,
                     bool wantsGaussNewton)
    : constellation_(constellation), rows_(rows), wantsGaussNewton_(wantsGaussNewton) {
  for (const Factor& factor : constellation.factors) {
    if (factor.parameter < constellation.MovedCount()) moved_.push_back(factor);
  }
  derivatives_.resize(moved_.size());
}

bool Objective::Evaluate(const VectorXd& parameters, Fit& fit) {
  const int size = constellation_.MovedCount();
  fit.cost = 0;
  fit.gradient.setZero(size);
  fit.hessian.setZero(size, size);
  if (wantsGaussNewton_) fit.gaussNewton.setZero(size, size);
  EvaluateMagnitude(parameters, fit);
  if (rows_.delayFrequencies.size() > 0) EvaluateDelay(parameters, fit);
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

// The gain is linear in the errors and is eliminated (G. Golub and V. Pereyra, SIAM J. Numer.
// Anal. 10 (1973) 413: variable projection). The reduced Hessian is the Schur complement
// F_yy - F_yg F_gy / F_gg; with a_j = a G_j, G the relative derivatives, and c = e g a:
//   F_yy = 2/N sum((ga)^2 G_j G_k + c S_jk), S the relative second derivatives,
//   which is G_j G_k for different factors, and g F_yg = 2/N sum(((ga)^2 + c) G_j).
void Objective::EvaluateMagnitude(const VectorXd& parameters, Fit& fit) {
  const ArrayXd a = rows_.inputs * Magnitudes(constellation_, parameters, rows_.frequencies);
  const double sumSquare = a.square().sum();
  fit.gain = (a * rows_.targets).sum() / sumSquare;
  fit.meanSquare = 0;
  fit.largestError = 0;
  sums_.Clear(constellation_.MovedCount());
  gaussSums_.Clear(constellation_.MovedCount());
  const Index rows = a.size();
  ForBlocks(rows, [&](Index first, Index count) {
    const Rows w = rows_.frequencies.segment(first, count);
    for (std::size_t i = 0; i < moved_.size(); ++i) {
      derivatives_[i] = RelativeDerivatives(moved_[i], parameters, w);
    }
    AddMagnitudeBlock(a.segment(first, count), rows_.targets.segment(first, count), fit);
  });
  fit.meanSquare /= static_cast<double>(rows);
  fit.cost = rows_.magnitudeWeight * fit.meanSquare;
  const double scale = 2 * rows_.magnitudeWeight / static_cast<double>(rows);
  const double constantSquare = fit.gain * fit.gain * sumSquare;
  fit.gradient = scale * sums_.gradient;
  Finish(sums_, scale, constantSquare, fit.hessian);
  if (wantsGaussNewton_) Finish(gaussSums_, scale, constantSquare, fit.gaussNewton);
}

void Objective::AddMagnitudeBlock(const Rows& a, const Rows& targets, Fit& fit) {
  const Rows obtained = fit.gain * a;
  const Rows errors = obtained - targets;
  fit.meanSquare += errors.square().sum();
  fit.largestError = std::max(fit.largestError, errors.abs().maxCoeff());
  BlockWeights weights;
  weights.gradient = errors * obtained;
  weights.own = obtained.square();
  weights.outer = weights.own + weights.gradient;
  weights.cross = weights.outer;
  AddBlock(weights, sums_);
  if (!wantsGaussNewton_) return;
  weights.gradient.setZero();
  weights.outer = weights.cross = weights.own;
  AddBlock(weights, gaussSums_);
}

void Objective::EvaluateDelay(const VectorXd& parameters, Fit& fit) {
  ArrayXd errors = DelayErrorsWithoutConstant(constellation_, rows_, parameters);
  fit.delayConstant = BestConstant(rows_, errors);
  errors -= fit.delayConstant * rows_.delayLevels;
  fit.delayMeanSquare = errors.square().mean();
  fit.cost += fit.delayMeanSquare;
  sums_.Clear(constellation_.MovedCount());
  gaussSums_.Clear(constellation_.MovedCount());
  ForBlocks(errors.size(), [&](Index first, Index count) {
    const Rows w = rows_.delayFrequencies.segment(first, count);
    for (std::size_t i = 0; i < moved_.size(); ++i) {
      derivatives_[i] = DelayDerivatives(moved_[i], parameters, w);
    }
    const Rows slopes = rows_.delaySlopes.segment(first, count);
    BlockWeights weights;
    weights.gradient = errors.segment(first, count) * slopes;
    weights.own = weights.outer = slopes.square();
    weights.cross = slopes * rows_.delayLevels.segment(first, count);
    AddBlock(weights, sums_);
    if (!wantsGaussNewton_) return;
    weights.gradient.setZero();
    AddBlock(weights, gaussSums_);
  });
  const double scale = 2 / static_cast<double>(errors.size());
  if (rows_.wantedDelay > 0) {
    sums_.cross.setZero();
    gaussSums_.cross.setZero();
  }
  const double constantSquare = rows_.delayLevels.square().sum();
  fit.gradient += scale * sums_.gradient;
  Finish(sums_, scale, constantSquare, fit.hessian);
  if (wantsGaussNewton_) Finish(gaussSums_, scale, constantSquare, fit.gaussNewton);
}

void Objective::AddBlock(const BlockWeights& weights, Sums& sums) const {
  for (std::size_t i = 0; i < moved_.size(); ++i) {
    for (std::size_t part = 0; part < moved_[i].Parts(); ++part) {
      AddOwn(i, part, weights, sums);
      const Rows outer = weights.outer * derivatives_[i].first[part];
      for (std::size_t other = 0; other < i; ++other) {
        AddProducts(outer, moved_[i].Parameter(part), other, sums);
      }
    }
  }
}

void Objective::AddOwn(std::size_t index, std::size_t part, const BlockWeights& weights,
                       Sums& sums) const {
  const FactorDerivatives<Rows>& own = derivatives_[index];
  const Rows& slope = own.first[part];
  const int row = moved_[index].Parameter(part);
  sums.gradient[row] += (weights.gradient * slope).sum();
  sums.cross[row] += (weights.cross * slope).sum();
  const Rows weighted = weights.own * slope;
  for (std::size_t other = 0; other <= part; ++other) {
    sums.products(row, moved_[index].Parameter(other)) +=
        (weighted * own.first[other] + weights.gradient * own.second[part + other]).sum();
  }
}

void Objective::AddProducts(const Rows& outer, int parameter, std::size_t other, Sums& sums) const {
  for (std::size_t part = 0; part < moved_[other].Parts(); ++part) {
    const int second = moved_[other].Parameter(part);
    sums.products(std::max(parameter, second), std::min(parameter, second)) +=
        (outer * derivatives_[other].first[part]).sum();
  }
}

void Objective::Finish(const Sums& sums, double scale, double constantSquare,
                       Eigen::MatrixXd& to) const {
  for (Index row = 0; row < to.rows(); ++row) {
    for (Index column = 0; column <= row; ++column) {
      const double product =
          sums.products(row, column) - sums.cross[row] * sums.cross[column] / constantSquare;
      to(row, column) += scale * product;
      to(column, row) = to(row, column);
    }
  }
}

}  // namespace polefit

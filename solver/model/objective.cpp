#include "solver/model/objective.h"

#include <algorithm>
#include <cmath>

namespace polefit {

namespace {

using Eigen::ArrayXd;
using Eigen::Index;
using Eigen::VectorXd;

/// How many rows the data from `first` on fill in their chunk.
std::size_t RowCount(const ArrayXd& column, std::size_t first) {
  const std::size_t rows = std::min(kChunkRows, static_cast<std::size_t>(column.size()) - first);
  return (rows + kLanes - 1) / kLanes * kLanes;
}

/// The rows from `first` on of a column, 0 beyond its end.
Chunk ChunkOf(const ArrayXd& column, std::size_t first) {
  Chunk chunk{};
  const std::size_t end = std::min(first + kChunkRows, static_cast<std::size_t>(column.size()));
  std::copy(column.data() + first, column.data() + end, chunk.begin());
  return chunk;
}

/// The largest magnitude of a chunk.
[[gnu::always_inline]] inline double Largest(const Chunk& values, std::size_t rows) {
  std::array<double, kLanes> largest{};
  for (std::size_t i = 0; i < rows; i += kLanes) {
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
      largest[lane] = std::max(largest[lane], std::abs(values[i + lane]));
    }
  }
  return *std::max_element(largest.begin(), largest.end());
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

/// Takes the mixed derivatives' part off the lower triangle: a Schur complement.
void Reduce(const VectorXd& cross, double constantSquare, Eigen::MatrixXd& hessian) {
  for (Index column = 0; column < cross.size(); ++column) {
    const Index rest = cross.size() - column;
    hessian.col(column).tail(rest) -= cross[column] / constantSquare * cross.tail(rest);
  }
}

}  // namespace

Objective::Objective(const Constellation& constellation, const DataRows& rows)
    : constellation_(constellation),
      rows_(rows),
      derivatives_(constellation.factors.size()),
      first_(static_cast<std::size_t>(constellation.MovedCount())),
      isOmegaZero_(first_.size()) {
  for (std::size_t i = 0; i < derivatives_.size(); ++i) {
    const Factor& factor = constellation.factors[i];
    if (!IsMoved(factor)) continue;
    isOmegaZero_[factor.Parameter(0)] = factor.kind == FactorKind::omegaZero;
    for (std::size_t part = 0; part < factor.Parts(); ++part) {
      first_[factor.Parameter(part)] = &derivatives_[i].first[part];
    }
  }
  const auto passbandRows = static_cast<std::size_t>(rows.frequencies.size());
  for (std::size_t first = 0; first < passbandRows; first += kChunkRows) {
    passband_.push_back({RowCount(rows.frequencies, first),
                         ChunkOf(rows.frequencies, first),
                         ChunkOf(rows.inputs, first),
                         ChunkOf(rows.targets, first),
                         {}});
  }
  const auto delayRows = static_cast<std::size_t>(rows.delayFrequencies.size());
  for (std::size_t first = 0; first < delayRows; first += kChunkRows) {
    delays_.push_back({RowCount(rows.delayFrequencies, first),
                       ChunkOf(rows.delayFrequencies, first),
                       ChunkOf(rows.delayOffsets, first),
                       ChunkOf(rows.delaySlopes, first),
                       ChunkOf(rows.delayLevels, first),
                       {}});
  }
}

bool Objective::Evaluate(const VectorXd& parameters, Fit& fit) {
  Place(constellation_, parameters, factors_);
  const int size = constellation_.MovedCount();
  fit.gradient.setZero(size);
  fit.hessian.setZero(size, size);
  fit.gaussNewton.setZero(size, size);
  AddMagnitude(fit);
  if (!delays_.empty()) AddDelay(fit);
  fit.hessian.triangularView<Eigen::StrictlyUpper>() = fit.hessian.transpose();
  fit.gaussNewton.triangularView<Eigen::StrictlyUpper>() = fit.gaussNewton.transpose();
  return std::isfinite(fit.cost) && fit.gain > 0;
}

bool Objective::EvaluateErrors(const VectorXd& parameters, Fit& fit) {
  Place(constellation_, parameters, factors_);
  FindObtained(fit);
  double squares = 0;
  fit.largestError = 0;
  for (const PassbandChunk& chunk : passband_) {
    Chunk errors;
    for (std::size_t i = 0; i < chunk.rows; ++i) {
      errors[i] = fit.gain * chunk.obtained[i] - chunk.target[i];
    }
    squares += Dot(errors, errors, chunk.rows);
    fit.largestError = std::max(fit.largestError, Largest(errors, chunk.rows));
  }
  fit.meanSquare = squares / static_cast<double>(rows_.frequencies.size());
  fit.cost = rows_.magnitudeWeight * fit.meanSquare;
  if (!delays_.empty()) {
    FindDelayErrors(fit);
    squares = 0;
    for (const DelayChunk& chunk : delays_) {
      Chunk errors;
      for (std::size_t i = 0; i < chunk.rows; ++i) {
        errors[i] = chunk.error[i] - fit.delayConstant * chunk.level[i];
      }
      squares += Dot(errors, errors, chunk.rows);
    }
    fit.delayMeanSquare = squares / static_cast<double>(rows_.delayFrequencies.size());
    fit.cost += fit.delayMeanSquare;
  }
  return std::isfinite(fit.cost) && fit.gain > 0;
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
// F_yy - F_yg F_gy / F_gg. With G the first derivatives of ln a, L the second ones and c = e g a:
//   F_yy = 2/N sum(((ga)^2 + c) G_j G_k + c L_jk), where L is 0 for different factors,
//   g F_yg = 2/N sum(((ga)^2 + c) G_j) and g^2 F_gg = 2/N sum((ga)^2).
// An omega-axis zero on a row's frequency makes a 0 and G infinite. All terms above stay finite but
// its own c (G^2 + L); there c S takes its place, S the second derivative of a divided by a. The
// Gauss-Newton model is what remains without c.
POLEFIT_WIDE void Objective::AddMagnitude(Fit& fit) {
  const double sumSquare = FindObtained(fit);
  const auto count = static_cast<double>(rows_.frequencies.size());
  const double scale = 2 * rows_.magnitudeWeight / count;
  cross_.setZero(fit.gradient.size());
  gaussCross_.setZero(fit.gradient.size());
  double squares = 0;
  fit.largestError = 0;
  weights_.isLogarithmic = true;
  for (const PassbandChunk& chunk : passband_) {
    for (std::size_t i = 0; i < factors_.size(); ++i) {
      DeriveRelative(factors_[i], chunk.rows, chunk.frequency, derivatives_[i]);
    }
    Chunk errors;
    for (std::size_t i = 0; i < chunk.rows; ++i) {
      const double obtained = fit.gain * chunk.obtained[i];
      errors[i] = obtained - chunk.target[i];
      weights_.gradient[i] = scale * errors[i] * obtained;
      weights_.square[i] = scale * obtained * obtained;
      weights_.cross[i] = weights_.square[i];
    }
    squares += Dot(errors, errors, chunk.rows);
    fit.largestError = std::max(fit.largestError, Largest(errors, chunk.rows));
    AddChunk(chunk.rows, fit);
  }
  Eliminate(scale * fit.gain * fit.gain * sumSquare, fit);
  fit.meanSquare = squares / count;
  fit.cost = rows_.magnitudeWeight * fit.meanSquare;
}

/// The obtained values of all rows and the gain; the result is sum(a^2).
POLEFIT_WIDE double Objective::FindObtained(Fit& fit) {
  double squares = 0;
  double products = 0;
  for (PassbandChunk& chunk : passband_) {
    chunk.obtained = chunk.input;
    for (std::size_t first = 0; first < factors_.size(); first += kFactorsARoot) {
      MultiplyMagnitudes(first, chunk);
    }
    squares += Dot(chunk.obtained, chunk.obtained, chunk.rows);
    products += Dot(chunk.obtained, chunk.target, chunk.rows);
  }
  fit.gain = products / squares;
  return squares;
}

/// Multiplies the obtained values by some factors' magnitudes: so many that their squares stay in
/// the range of numbers.
POLEFIT_WIDE void Objective::MultiplyMagnitudes(std::size_t first, PassbandChunk& chunk) const {
  Chunk zeros;
  Chunk poles;
  zeros.fill(1);
  poles.fill(1);
  for (std::size_t i = first; i < std::min(first + kFactorsARoot, factors_.size()); ++i) {
    MultiplySquare(factors_[i], chunk.rows, chunk.frequency, zeros, poles);
  }
  for (std::size_t i = 0; i < chunk.rows; ++i) {
    chunk.obtained[i] *= std::sqrt(zeros[i] / poles[i]);
  }
}

POLEFIT_WIDE void Objective::AddDelay(Fit& fit) {
  const double sumSquare = FindDelayErrors(fit);
  const auto count = static_cast<double>(rows_.delayFrequencies.size());
  const double scale = 2 / count;
  cross_.setZero(fit.gradient.size());
  gaussCross_.setZero(fit.gradient.size());
  double squares = 0;
  weights_.isLogarithmic = false;
  for (const DelayChunk& chunk : delays_) {
    for (std::size_t i = 0; i < factors_.size(); ++i) {
      DeriveDelay(factors_[i], chunk.rows, chunk.frequency, derivatives_[i]);
    }
    Chunk errors;
    for (std::size_t i = 0; i < chunk.rows; ++i) {
      errors[i] = chunk.error[i] - fit.delayConstant * chunk.level[i];
      weights_.gradient[i] = scale * errors[i] * chunk.slope[i];
      weights_.square[i] = scale * chunk.slope[i] * chunk.slope[i];
      weights_.cross[i] = scale * chunk.slope[i] * chunk.level[i];
    }
    squares += Dot(errors, errors, chunk.rows);
    AddChunk(chunk.rows, fit);
  }
  if (rows_.wantedDelay <= 0) Eliminate(scale * sumSquare, fit);
  fit.delayMeanSquare = squares / count;
  fit.cost += fit.delayMeanSquare;
}

/// The errors of all delay rows without the constant, and the constant; the result is
/// sum(levels^2).
POLEFIT_WIDE double Objective::FindDelayErrors(Fit& fit) {
  double products = 0;
  double squares = 0;
  for (DelayChunk& chunk : delays_) {
    Chunk delay{};
    for (const PlacedFactor& factor : factors_) {
      polefit::AddDelay(factor, chunk.rows, chunk.frequency, delay);
    }
    for (std::size_t i = 0; i < chunk.rows; ++i) {
      chunk.error[i] = chunk.offset[i] + chunk.slope[i] * delay[i];
    }
    products += Dot(chunk.error, chunk.level, chunk.rows);
    squares += Dot(chunk.level, chunk.level, chunk.rows);
  }
  fit.delayConstant = rows_.wantedDelay > 0 ? rows_.wantedDelay : products / squares;
  return squares;
}

/// Adds a chunk to the gradient, the lower triangles of both Hessians, and the mixed derivatives.
POLEFIT_WIDE void Objective::AddChunk(std::size_t rows, Fit& fit) {
  AddProducts(rows, fit);
  for (std::size_t i = 0; i < factors_.size(); ++i) {
    if (!IsMoved(factors_[i])) continue;
    const Index row = factors_[i].parameter;
    const double second = Dot(weights_.gradient, derivatives_[i].second[0], rows);
    fit.hessian(row, row) += second;
    if (!factors_[i].IsPair()) continue;
    fit.hessian(row + 1, row + 1) -= second;
    fit.hessian(row + 1, row) += Dot(weights_.gradient, derivatives_[i].second[1], rows);
  }
}

/// Adds what consists of first derivatives.
POLEFIT_WIDE void Objective::AddProducts(std::size_t rows, Fit& fit) {
  Chunk weighted;
  Chunk byError;
  for (std::size_t i = 0; i < first_.size(); ++i) {
    const auto row = static_cast<Index>(i);
    const Chunk& first = *first_[i];
    for (std::size_t k = 0; k < rows; ++k) weighted[k] = weights_.square[k] * first[k];
    for (std::size_t k = 0; k < rows; ++k) byError[k] = weights_.gradient[k] * first[k];
    const double slope = Sum(byError, rows);
    fit.gradient[row] += slope;
    const double cross = Dot(weights_.cross, first, rows);
    gaussCross_[row] += cross;
    cross_[row] += weights_.isLogarithmic ? cross + slope : cross;
    for (std::size_t j = 0; j <= i; ++j) {
      const auto column = static_cast<Index>(j);
      const double product = Dot(weighted, *first_[j], rows);
      fit.gaussNewton(row, column) += product;
      fit.hessian(row, column) += product;
      if (!weights_.isLogarithmic || (i == j && isOmegaZero_[i])) continue;
      fit.hessian(row, column) += Dot(byError, *first_[j], rows);
    }
  }
}

/// Lets the constant of the mixed derivatives follow the locations.
void Objective::Eliminate(double constantSquare, Fit& fit) const {
  Reduce(cross_, constantSquare, fit.hessian);
  Reduce(gaussCross_, constantSquare, fit.gaussNewton);
}

}  // namespace polefit

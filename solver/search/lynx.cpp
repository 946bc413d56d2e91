#include "solver/search/lynx.h"

#include <Eigen/LU>
#include <algorithm>
#include <cmath>
#include <limits>

namespace polefit {

using Eigen::MatrixXd;
using Eigen::VectorXd;

namespace {

/// The polynomial in X = w^2 through points of alternating sign and given size, with value 1 at 0
/// but for a constant factor. (J.-P. Berrut and L. Trefethen, SIAM Rev. 46 (2004) 501: barycentric
/// interpolation.)
class AlternatingPolynomial {
 public:
  AlternatingPolynomial(const std::vector<double>& nodes, const std::vector<double>& sizes)
      : nodes_(nodes), terms_(nodes.size()) {
    for (std::size_t k = 0; k < nodes.size(); ++k) {
      terms_[k] = sizes[k];
      for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (i != k) terms_[k] /= std::abs(nodes[k] - nodes[i]);
      }
    }
  }

  /// The value divided by the product of all (X - node), whose sign the caller knows.
  double ReducedAt(double x) const {
    double sum = 0;
    for (std::size_t k = 0; k < nodes_.size(); ++k) sum += terms_[k] / (x - nodes_[k]);
    return sum;
  }

 private:
  const std::vector<double>& nodes_;
  std::vector<double> terms_;
};

/// The zero of the polynomial between two neighbouring nodes, between which the reduced value falls
/// from infinity to minus infinity.
double ZeroBetween(const AlternatingPolynomial& polynomial, double low, double high) {
  constexpr int kBisections = 52;
  double x = (low + high) / 2;
  for (int i = 0; i < kBisections; ++i) {
    (polynomial.ReducedAt(x) > 0 ? low : high) = x;
    x = (low + high) / 2;
  }
  return x;
}

}  // namespace

Lynx::Lynx(const Constellation& constellation, double largest, const Options& options,
           Listener& listener)
    : constellation_(constellation),
      rest_(constellation),
      largest_(largest),
      options_(options),
      listener_(listener) {
  const int begin = constellation.orcaCount;
  const int end = constellation.MovedCount();
  std::erase_if(rest_.factors, [&](const Factor& factor) {
    return factor.parameter >= begin && factor.parameter < end;
  });
  for (const Factor& factor : rest_.factors) {
    if (factor.kind == FactorKind::omegaZero) firstZero_ = factor.parameter;
  }
}

double Lynx::FirstZero(const VectorXd& parameters) const {
  return parameters[firstZero_];
}

/// The zeros ascend from the first one and stay below the end of the range.
bool Lynx::IsOrdered(const VectorXd& parameters) const {
  double former = FirstZero(parameters);
  for (int k = 0; k < constellation_.lynxCount; ++k) {
    const double zero = parameters[constellation_.orcaCount + k];
    if (!(zero > former)) return false;
    former = zero;
  }
  return former < largest_;
}

/// The peaks of all gaps; the result is the largest difference of neighbours, in nepers.
double Lynx::FindPeaks(const VectorXd& parameters, std::vector<Peak>& peaks) {
  peaks.clear();
  const LogCurve curve(constellation_, parameters);
  double from = FirstZero(parameters);
  double mismatch = 0;
  for (int k = 0; k <= constellation_.lynxCount; ++k) {
    const bool isLast = k == constellation_.lynxCount;
    const double to = isLast ? largest_ : parameters[constellation_.orcaCount + k];
    peaks.push_back(FindPeak(curve, {from, to, isLast}, options_, listener_));
    if (k > 0) {
      const double difference = std::abs(peaks.back().level - peaks[peaks.size() - 2].level);
      if (!(difference <= mismatch)) mismatch = difference;
    }
    from = to;
  }
  return mismatch;
}

void Lynx::FindSlopes(const VectorXd& parameters) {
  slopes_.resize(peaks_.size());
  for (std::size_t k = 0; k < peaks_.size(); ++k) {
    DeriveLogMagnitude(constellation_, parameters, peaks_[k].frequency, slopes_[k]);
  }
}

/// Solves R_u step = -R with R_k = M_k - M_(k+1). By the envelope theorem the derivative of a
/// peak is that of ln|H| at its place.
VectorXd Lynx::NewtonStep() const {
  const int count = constellation_.lynxCount;
  MatrixXd jacobian(count, count);
  VectorXd residual(count);
  for (int k = 0; k < count; ++k) {
    const auto here = static_cast<std::size_t>(k);
    residual[k] = peaks_[here].level - peaks_[here + 1].level;
    jacobian.row(k) =
        (slopes_[here].first - slopes_[here + 1].first).segment(constellation_.orcaCount, count);
  }
  return -jacobian.partialPivLu().solve(residual);
}

/// Takes as much of the step as keeps the zeros in order and lowers the mismatch by a tenth of
/// that share at least; false when eight halvings do not find it.
bool Lynx::TakeStep(const VectorXd& step, VectorXd& parameters) {
  constexpr int kMaxHalvings = 8;
  const auto zeros = parameters.segment(constellation_.orcaCount, constellation_.lynxCount);
  std::vector<Peak> peaks;
  double share = 1;
  for (int i = 0; i <= kMaxHalvings; ++i, share /= 2) {
    VectorXd trial = parameters;
    trial.segment(constellation_.orcaCount, constellation_.lynxCount) = zeros + share * step;
    if (!IsOrdered(trial)) continue;
    const double mismatch = FindPeaks(trial, peaks);
    if (!(mismatch <= (1 - 0.1 * share) * mismatch_)) continue;
    parameters = trial;
    peaks_.swap(peaks);
    mismatch_ = mismatch;
    listener_.LynxIterated(mismatch, share);
    return true;
  }
  return false;
}

void Lynx::Newton(VectorXd& parameters) {
  mismatch_ = std::numeric_limits<double>::infinity();
  if (!IsOrdered(parameters)) return;
  mismatch_ = FindPeaks(parameters, peaks_);
  for (int i = 0; i < options_.maxIterations[1]; ++i) {
    if (!std::isfinite(mismatch_)) return;
    const bool isLastStep = mismatch_ < options_.tolerance[1];
    FindSlopes(parameters);
    // One step more at the end: the derivatives of F rely on peaks that are truly equal.
    if (!TakeStep(NewtonStep(), parameters) || isLastStep) return;
  }
}

/// Moves the equalised zeros to those of the polynomial whose weighted size is the same at all
/// reference frequencies.
void Lynx::InterpolateZeros(const std::vector<double>& references, VectorXd& parameters) const {
  std::vector<double> nodes;
  std::vector<double> levels;
  const LogCurve weight(rest_, parameters);
  for (const double reference : references) {
    nodes.push_back(reference * reference);
    levels.push_back(weight.At(reference));
  }
  const double top = *std::max_element(levels.begin(), levels.end());
  for (double& level : levels) level = std::exp(top - level);
  const AlternatingPolynomial polynomial(nodes, levels);
  for (int k = 0; k < constellation_.lynxCount; ++k) {
    const auto here = static_cast<std::size_t>(k);
    parameters[constellation_.orcaCount + k] =
        std::sqrt(ZeroBetween(polynomial, nodes[here], nodes[here + 1]));
  }
}

/// The Remez exchange (E. Cheney, Introduction to Approximation Theory, 1966, chapter 3).
void Lynx::Remez(VectorXd& parameters) {
  constexpr int kMaxExchanges = 40;
  constexpr double kEqual = 1e-7;
  ++remezCount_;
  const int count = constellation_.lynxCount + 1;
  const double first = FirstZero(parameters);
  std::vector<double> references;
  references.reserve(static_cast<std::size_t>(count));
  for (int k = 0; k < count; ++k) {
    references.push_back(first * std::pow(largest_ / first, (k + 0.5) / count));
  }
  for (int i = 0; i < kMaxExchanges; ++i) {
    InterpolateZeros(references, parameters);
    if (!IsOrdered(parameters)) return;
    mismatch_ = FindPeaks(parameters, peaks_);
    if (!(mismatch_ > kEqual)) return;
    for (std::size_t k = 0; k < peaks_.size(); ++k) references[k] = peaks_[k].frequency;
  }
}

bool Lynx::Equalise(VectorXd& parameters) {
  // Mismatches in ln |H|. Newton doubles the digits with each step: what it leaves above the first
  // did not converge. The second is 1e-5 dB, which no curve shows, and leaves room for the noise
  // of a peak's level that zeros close to one another make.
  constexpr double kConverged = 1e-8;
  constexpr double kEqualEnough = 1e-6;
  if (!(largest_ > FirstZero(parameters))) return false;
  Newton(parameters);
  if (!(mismatch_ <= std::max(options_.tolerance[1], kConverged))) {
    Remez(parameters);
    Newton(parameters);
  }
  return mismatch_ <= std::max(options_.tolerance[1], kEqualEnough);
}

// With Z = [1; u'] and u' = -R_u^-1 R_x the reduced gradient is Z^T F_y. The second derivatives
// of u enter through the multipliers of R: with R_u^T m = F_u the reduced Hessian is
// Z^T (F_yy - sum m_k R_k,yy) Z. A peak's own place moves with the locations, so its second
// derivative is M_qr - M_qw M_rw / M_ww, unless it stands at the end of the range.
void Lynx::Eliminate(const VectorXd& parameters, Fit& fit) {
  FindSlopes(parameters);
  const LogCurve curve(constellation_, parameters);
  const int orca = constellation_.orcaCount;
  const int count = constellation_.lynxCount;
  MatrixXd jacobian(count, orca + count);
  for (int k = 0; k < count; ++k) {
    const auto here = static_cast<std::size_t>(k);
    jacobian.row(k) = slopes_[here].first - slopes_[here + 1].first;
  }
  const Eigen::PartialPivLU<MatrixXd> byZeros(jacobian.rightCols(count));
  MatrixXd basis(orca + count, orca);
  basis.topRows(orca).setIdentity();
  basis.bottomRows(count) = -byZeros.solve(jacobian.leftCols(orca));
  const VectorXd multipliers = byZeros.transpose().solve(fit.gradient.tail(count));
  for (int k = 0; k <= count; ++k) {
    const double weight = (k < count ? multipliers[k] : 0) - (k > 0 ? multipliers[k - 1] : 0);
    LogDerivatives& peak = slopes_[static_cast<std::size_t>(k)];
    fit.hessian -= weight * peak.second;
    if (peaks_[static_cast<std::size_t>(k)].isEnd) continue;
    const double bend = curve.SlopeAt(peaks_[static_cast<std::size_t>(k)].frequency).second;
    fit.hessian += weight / bend * peak.mixed * peak.mixed.transpose();
  }
  fit.gradient = (basis.transpose() * fit.gradient).eval();
  fit.hessian = (basis.transpose() * fit.hessian * basis).eval();
  fit.gaussNewton = (basis.transpose() * fit.gaussNewton * basis).eval();
}

}  // namespace polefit

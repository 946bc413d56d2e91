#include "solver/search/trust_region.h"

#include <Eigen/Cholesky>
#include <Eigen/Eigenvalues>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace polefit {

using Eigen::Index;
using Eigen::MatrixXd;
using Eigen::VectorXd;

namespace {

/// (B + shift) s = -g for many shifts. With B = Q T Q', T tridiagonal, a shift costs a few
/// operations a variable: T + shift = L D L', L with ones on its diagonal.
class ShiftedSystem {
 public:
  ShiftedSystem(const VectorXd& gradient, const MatrixXd& hessian)
      : reduction_(hessian), rows_(static_cast<std::size_t>(gradient.size())) {
    const VectorXd right = reduction_.matrixQ().adjoint() * gradient;
    for (Index i = 0; i < gradient.size(); ++i) {
      Row& row = rows_[static_cast<std::size_t>(i)];
      row.diagonal = reduction_.diagonal()[i];
      row.below = i + 1 < gradient.size() ? reduction_.subDiagonal()[i] : 0;
      row.right = -right[i];
    }
  }

  /// No eigenvalue is farther from 0 (S. Gershgorin's discs).
  double LargestEigenvalue() const {
    double largest = 0;
    double above = 0;
    for (const Row& row : rows_) {
      largest = std::max(largest, std::abs(row.diagonal) + std::abs(row.below) + above);
      above = std::abs(row.below);
    }
    return largest;
  }

  /// False, and without a solution, where B + shift is not positive definite.
  bool Solve(double shift) {
    shift_ = shift;
    double fromPivot = 0;
    double fromRight = 0;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      Row& row = rows_[i];
      const double pivot = row.diagonal + shift - fromPivot;
      isSolved_ = pivot > 0;
      if (!isSolved_) {
        FindNegativeCurvature(i, pivot);
        return false;
      }
      row.inversePivot = 1 / pivot;
      row.factor = row.below * row.inversePivot;
      row.solution = row.right - fromRight;
      fromPivot = row.factor * row.below;
      fromRight = row.factor * row.solution;
    }
    SolveBackwards();
    return true;
  }

  double Shift() const { return shift_; }
  bool IsSolved() const { return isSolved_; }

  VectorXd Step() const {
    VectorXd step(static_cast<Index>(rows_.size()));
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      step[static_cast<Index>(i)] = rows_[i].solution;
    }
    step.applyOnTheLeft(reduction_.matrixQ());
    return step;
  }

  double Length() const {
    double square = 0;
    for (const Row& row : rows_) square += row.solution * row.solution;
    return std::sqrt(square);
  }

  /// s'(B + shift)^-1 s, which is -|s| times the derivative of |s| by the shift.
  double Shortening() const {
    double part = 0;
    double sum = 0;
    for (const Row& row : rows_) {
      part = row.solution - part;
      sum += part * part * row.inversePivot;
      part *= row.factor;
    }
    return sum;
  }

  /// After a failure, of a unit vector u: the shift that makes u'(B + shift)u = 0, a bound of all
  /// solvable ones, and |u'g|.
  double LeastShift() const { return leastShift_; }
  double SlopeAlong() const { return slopeAlong_; }

 private:
  /// Of T, of the factors, and of the system with T.
  struct Row {
    double diagonal;
    double below;  ///< beside the diagonal in the next row
    double right;
    double inversePivot;
    double factor;  ///< of L in the next row
    double solution;
  };

  /// With L'u = e_i the curvature along u is the pivot i.
  void FindNegativeCurvature(std::size_t i, double pivot) {
    double u = 1;
    double square = 1;
    double slope = rows_[i].right;
    while (i-- > 0) {
      u *= -rows_[i].factor;
      square += u * u;
      slope += u * rows_[i].right;
    }
    leastShift_ = shift_ - pivot / square;
    slopeAlong_ = std::abs(slope) / std::sqrt(square);
  }

  void SolveBackwards() {
    double behind = 0;
    for (std::size_t i = rows_.size(); i-- > 0;) {
      behind = rows_[i].solution * rows_[i].inversePivot - rows_[i].factor * behind;
      rows_[i].solution = behind;
    }
  }

  Eigen::Tridiagonalization<MatrixXd> reduction_;
  std::vector<Row> rows_;
  double shift_ = 0;
  bool isSolved_ = false;
  double leastShift_ = 0;
  double slopeAlong_ = 0;
};

/// Goes on from a shift that is too small, below `high`, to one that makes the step as long as the
/// radius: Newton's method on 1/|s| - 1/radius, which is nearly linear and concave, so that it
/// stays below the solution once it is. False, with the longest step there is, where that is
/// shorter.
bool ReachRadius(ShiftedSystem& system, double high, double radius) {
  // Every shift gives the exact minimiser within its own length, so that a few digits will do.
  constexpr double kTolerance = 1e-3;
  double low = system.Shift();
  while (true) {
    double next = 0;
    if (system.IsSolved()) {
      const double length = system.Length();
      if (std::abs(length - radius) <= kTolerance * radius) return true;
      (length > radius ? low : high) = system.Shift();
      next = system.Shift() + (length - radius) / radius * length * length / system.Shortening();
    } else {
      // As if the step went along the one known direction of negative curvature.
      low = system.LeastShift();
      next = low + system.SlopeAlong() / radius;
    }
    if (!(next > low && next < high)) next = (low + high) / 2;
    if (!(next > low && next < high)) break;
    system.Solve(next);
  }
  system.Solve(high);
  return false;
}

/// The hard case: the gradient has no part along the lowest eigenvector, so that the step is
/// completed along it.
VectorXd Completed(const VectorXd& step, const MatrixXd& hessian, double radius) {
  const VectorXd lowest = Eigen::SelfAdjointEigenSolver<MatrixXd>(hessian).eigenvectors().col(0);
  const double along = lowest.dot(step);
  const double rest = radius * radius - step.squaredNorm();
  const double way = std::sqrt(std::max(0.0, along * along + rest));
  return step + (along > 0 ? way - along : -way - along) * lowest;
}

/// Newton's step, where B is positive definite and the step fits; the usual case near the end.
bool TakeNewtonStep(const VectorXd& gradient, const MatrixXd& hessian, double radius,
                    TrustStep& result) {
  const Eigen::LLT<MatrixXd> factors(hessian);
  if (factors.info() != Eigen::Success) return false;
  result.step = -factors.solve(gradient);
  if (!(result.step.norm() <= radius)) return false;
  result.predictedDecrease = -gradient.dot(result.step) / 2;
  return true;
}

}  // namespace

double PredictedDecrease(const VectorXd& gradient, const MatrixXd& hessian, const VectorXd& step) {
  return -(gradient.dot(step) + step.dot(hessian * step) / 2);
}

TrustStep SolveTrustRegion(const VectorXd& gradient, const MatrixXd& hessian, double radius) {
  TrustStep result;
  if (TakeNewtonStep(gradient, hessian, radius, result)) return result;
  ShiftedSystem system(gradient, hessian);
  const double largest = system.LargestEigenvalue();
  const double tiny = std::max(1e-14 * largest, 1e-300);
  result.isIndefinite = !system.Solve(tiny);
  result.isAtEdge = result.isIndefinite || system.Length() > radius;
  const double tooLarge = largest + tiny + gradient.norm() / radius;
  if (result.isAtEdge && !ReachRadius(system, tooLarge, radius)) {
    result.step = Completed(system.Step(), hessian, radius);
  } else {
    result.step = system.Step();
  }
  result.predictedDecrease = PredictedDecrease(gradient, hessian, result.step);
  return result;
}

double NextRadius(double radius, double stepLength, bool isAtEdge, double gainRatio) {
  constexpr double kLargestRadius = 3;
  if (!(gainRatio >= 0)) return 0.25 * std::min(radius, stepLength);
  if (gainRatio < 0.1) return 0.5 * std::min(radius, stepLength);
  if (gainRatio > 0.9 && isAtEdge) return std::min(1.7 * radius, kLargestRadius);
  return radius;
}

}  // namespace polefit

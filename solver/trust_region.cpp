#include "solver/trust_region.h"

#include <Eigen/Cholesky>
#include <Eigen/Eigenvalues>
#include <algorithm>
#include <cmath>

namespace polefit {

using Eigen::VectorXd;

namespace {

/// |s| for the shift, s_i = g_i / (eigenvalue_i + shift).
double StepLength(const VectorXd& gradient, const VectorXd& eigenvalues, double shift) {
  return (gradient.array() / (eigenvalues.array() + shift)).matrix().norm();
}

/// The shift above -lowest eigenvalue that makes the step as long as the radius: Newton's method
/// on 1/|s| - 1/radius, which is nearly linear, inside a bracket.
double ShiftForRadius(const VectorXd& gradient, const VectorXd& eigenvalues, double radius) {
  constexpr int kMaxIterations = 60;
  double low = std::max(0.0, -eigenvalues[0]);
  double high = low + gradient.norm() / radius;
  double shift = high;
  for (int i = 0; i < kMaxIterations; ++i) {
    const double length = StepLength(gradient, eigenvalues, shift);
    if (std::abs(length - radius) <= 1e-6 * radius) break;
    (length > radius ? low : high) = shift;
    const auto shifted = eigenvalues.array() + shift;
    const double derivative = (gradient.array().square() / shifted.cube()).sum();
    const double next = shift + (length - radius) / radius * length * length / derivative;
    shift = next > low && next < high ? next : (low + high) / 2;
  }
  return shift;
}

/// Newton's step, where B is positive definite and the step fits; the usual case near the end.
bool TakeNewtonStep(const VectorXd& gradient, const Eigen::MatrixXd& hessian, double radius,
                    TrustStep& result) {
  const Eigen::LLT<Eigen::MatrixXd> factors(hessian);
  if (factors.info() != Eigen::Success) return false;
  result.step = -factors.solve(gradient);
  if (!(result.step.norm() <= radius)) return false;
  result.predictedDecrease = -gradient.dot(result.step) / 2;
  return true;
}

}  // namespace

double PredictedDecrease(const VectorXd& gradient, const Eigen::MatrixXd& hessian,
                         const VectorXd& step) {
  return -(gradient.dot(step) + step.dot(hessian * step) / 2);
}

TrustStep SolveTrustRegion(const VectorXd& gradient, const Eigen::MatrixXd& hessian,
                           double radius) {
  TrustStep result;
  if (TakeNewtonStep(gradient, hessian, radius, result)) return result;
  const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> solver(hessian);
  const VectorXd& eigenvalues = solver.eigenvalues();
  const VectorXd inEigenbasis = solver.eigenvectors().transpose() * gradient;
  const double largest = eigenvalues.cwiseAbs().maxCoeff();
  const double tiny = 1e-14 * std::max(largest, 1e-300);

  result.isIndefinite = eigenvalues[0] < -tiny;
  double shift = std::max(0.0, tiny - eigenvalues[0]);
  const double length = StepLength(inEigenbasis, eigenvalues, shift);
  VectorXd step;
  if (!(length <= radius)) {
    shift = ShiftForRadius(inEigenbasis, eigenvalues, radius);
    result.isAtEdge = true;
  }
  step = -(inEigenbasis.array() / (eigenvalues.array() + shift)).matrix();
  if (result.isIndefinite && !result.isAtEdge) {
    // The hard case: the gradient has no part along the lowest eigenvector, so that the step is
    // completed along it.
    const double rest = std::sqrt(std::max(0.0, radius * radius - length * length));
    step[0] += inEigenbasis[0] > 0 ? -rest : rest;
    result.isAtEdge = true;
  }
  result.predictedDecrease =
      -(inEigenbasis.dot(step) + (eigenvalues.array() * step.array().square()).sum() / 2);
  result.step = solver.eigenvectors() * step;
  return result;
}

double NextRadius(double radius, double stepLength, bool isAtEdge, double share) {
  constexpr double kLargestRadius = 3;
  if (!(share >= 0)) return 0.25 * std::min(radius, stepLength);
  if (share < 0.1) return 0.5 * std::min(radius, stepLength);
  if (share > 0.9 && isAtEdge) return std::min(1.7 * radius, kLargestRadius);
  return radius;
}

}  // namespace polefit

#pragma once

#include <Eigen/Core>

namespace polefit {

/// A minimiser of g's + s'Bs/2 within |s| <= radius.
struct TrustStep {
  Eigen::VectorXd step;
  double predictedDecrease = 0;
  bool isAtEdge = false;
  bool isIndefinite = false;  ///< B has a negative eigenvalue
};

/// The exact solution by the eigenvalues of B (A. Conn, N. Gould and P. Toint, Trust-Region
/// Methods, 2000, section 7.3, the hard case included).
TrustStep SolveTrustRegion(const Eigen::VectorXd& gradient, const Eigen::MatrixXd& hessian,
                           double radius);

/// The decrease -(g's + s'Bs/2) that the quadratic model predicts for a step.
double PredictedDecrease(const Eigen::VectorXd& gradient, const Eigen::MatrixXd& hessian,
                         const Eigen::VectorXd& step);

/// The next radius, from the share of the predicted decrease that came true.
double NextRadius(double radius, double stepLength, bool isAtEdge, double share);

}  // namespace polefit

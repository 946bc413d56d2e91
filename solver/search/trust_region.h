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

/// The exact solution, the hard case included: Newton's step where it fits, else the shift of B
/// that makes the step as long as the radius within 0.1 % (A. Conn, N. Gould and P. Toint,
/// Trust-Region Methods, 2000, section 7.3).
TrustStep SolveTrustRegion(const Eigen::VectorXd& gradient, const Eigen::MatrixXd& hessian,
                           double radius);

/// The decrease -(g's + s'Bs/2) that the quadratic model predicts for a step.
double PredictedDecrease(const Eigen::VectorXd& gradient, const Eigen::MatrixXd& hessian,
                         const Eigen::VectorXd& step);

/// The next radius, from the gain ratio: the decrease that came true, over the predicted one.
double NextRadius(double radius, double stepLength, bool isAtEdge, double gainRatio);

}  // namespace polefit

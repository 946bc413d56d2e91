#pragma once

#include <Eigen/Core>

#include "solver/problem/problem.h"
#include "solver/search/evaluator.h"
#include "solver/search/step_control.h"

namespace polefit {

/// The barrier function F - rho sum(ln(x - lower) + ln(upper - x)) with multipliers of the bounds;
/// its Hessian is primal-dual, multiplier / slack. (J. Nocedal and S. Wright, Numerical
/// Optimization, 2006, chapter 19.)
class Barrier {
 public:
  Barrier(const Problem& problem, double rho, const Eigen::VectorXd& parameters);

  double Rho() const { return rho_; }
  double Value(const Iterate& iterate) const;
  /// Both models, by the variables divided by `scales`.
  StepModels ModelsAt(const Iterate& iterate, const Eigen::ArrayXd& scales) const;

  /// The penalty dominates F, so that a smaller rho tells more.
  bool Dominates(double cost) const;

  /// Newton's step for multiplier * slack = rho, from before the step to its end.
  void MoveMultipliers(const Eigen::VectorXd& before, const Eigen::VectorXd& after);
  void LowerRho(double rho, const Eigen::VectorXd& parameters);

 private:
  // Expressions, so that no array is made for them.
  auto LowSlack(const Eigen::VectorXd& parameters) const {
    return parameters.head(problem_.lower.size()).array() - problem_.lower.array();
  }
  auto HighSlack(const Eigen::VectorXd& parameters) const {
    return problem_.upper.array() - parameters.head(problem_.upper.size()).array();
  }
  void Safeguard(const Eigen::VectorXd& parameters);

  const Problem& problem_;
  double rho_;
  Eigen::ArrayXd lowMultipliers_;
  Eigen::ArrayXd highMultipliers_;
};

}  // namespace polefit

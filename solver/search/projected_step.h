#pragma once

#include <Eigen/Core>

#include "solver/search/step_control.h"

namespace polefit {

/// Where the variables are, and what they may become.
struct Box {
  const Eigen::VectorXd& lower;
  const Eigen::VectorXd& upper;
  Eigen::VectorXd variables;
  Eigen::ArrayXd scales;
};

/// A trust-region step between bounds. Variables on a bound that the gradient pushes outwards stay.
/// What the step carries across a bound goes onto it, and the rest is solved again with that part
/// of the step given (D. Bertsekas, SIAM J. Control Optim. 20 (1982) 221: projected Newton).
/// A step that bounds have cut may predict no decrease: it is too long.
PlannedStep ProjectedStep(const StepModels& models, Model model, double radius, const Box& box);

}  // namespace polefit

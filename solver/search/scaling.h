#pragma once

#include <Eigen/Core>

#include "solver/model/objective.h"
#include "solver/problem/problem.h"
#include "solver/search/step_control.h"

namespace polefit {

/// The natural size of a change of each of ORCA's variables: the distance to the part of the omega
/// axis that counts, which sets how sharp a feature of |H| a location makes there.
Eigen::ArrayXd Scales(const Problem& problem, const Eigen::VectorXd& parameters);

/// Both models of F by the variables divided by `scales`.
StepModels ScaledModels(const Fit& fit, const Eigen::ArrayXd& scales);

}  // namespace polefit

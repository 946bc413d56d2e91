#include "solver/search/projected_step.h"

#include <vector>

#include "solver/search/trust_region.h"

namespace polefit {

using Eigen::Index;
using Eigen::VectorXd;

namespace {

class Projection {
 public:
  Projection(const StepModels& models, Model model, double radius, const Box& box)
      : models_(models), hessian_(models.Hessian(model)), radius_(radius), box_(box) {
    step_.scaled.setZero(box.variables.size());
    step_.variables = box.variables;
    for (Index i = 0; i < box.variables.size(); ++i) {
      if (!IsHeld(i)) free_.push_back(i);
    }
  }

  PlannedStep Plan() {
    while (!free_.empty()) {
      SolveForFree();
      if (!PutCrossedOntoBounds()) break;
      step_.isProjected = true;
    }
    step_.predictedDecrease = PredictedDecrease(models_.gradient, hessian_, step_.scaled);
    return step_;
  }

 private:
  bool IsHeld(Index i) const {
    const double slope = models_.gradient[i];
    const double value = box_.variables[i];
    return (slope > 0 && value <= box_.lower[i]) || (slope < 0 && value >= box_.upper[i]);
  }

  /// The step of the free variables, those on bounds having gone there.
  void SolveForFree() {
    step_.scaled(free_).setZero();
    const VectorXd gradient = models_.gradient + hessian_ * step_.scaled;
    const TrustStep trust = SolveTrustRegion(gradient(free_), hessian_(free_, free_), radius_);
    step_.scaled(free_) = trust.step;
    step_.isAtEdge = trust.isAtEdge;
    for (const Index i : free_) {
      step_.variables[i] = box_.variables[i] + box_.scales[i] * step_.scaled[i];
    }
  }

  /// Whether any variable has crossed a bound.
  bool PutCrossedOntoBounds() {
    const auto crosses = [this](Index i) {
      return step_.variables[i] < box_.lower[i] || step_.variables[i] > box_.upper[i];
    };
    std::vector<Index> inside;
    for (const Index i : free_) {
      if (!crosses(i)) {
        inside.push_back(i);
        continue;
      }
      step_.variables[i] = step_.variables[i] < box_.lower[i] ? box_.lower[i] : box_.upper[i];
      step_.scaled[i] = (step_.variables[i] - box_.variables[i]) / box_.scales[i];
    }
    const bool hasCrossed = inside.size() < free_.size();
    free_ = inside;
    return hasCrossed;
  }

  const StepModels& models_;
  const Eigen::MatrixXd& hessian_;
  double radius_;
  const Box& box_;
  std::vector<Index> free_;
  PlannedStep step_;
};

}  // namespace

PlannedStep ProjectedStep(const StepModels& models, Model model, double radius, const Box& box) {
  return Projection(models, model, radius, box).Plan();
}

}  // namespace polefit

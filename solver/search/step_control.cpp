#include "solver/search/step_control.h"

#include <cmath>

#include "solver/search/trust_region.h"

namespace polefit {

namespace {

constexpr double kFirstRadius = 0.3;
/// A step is taken above this gain ratio, the decrease over the predicted one.
constexpr double kLeastGainRatio = 1e-4;
/// By how much the other model's prediction must be better (NL2SOL's value).
constexpr double kClearlyBetter = 1.5;
constexpr int kMaxFallBacks = 2;

}  // namespace

double StepModels::PredictedDecrease(Model model, const Eigen::VectorXd& step) const {
  return polefit::PredictedDecrease(gradient, Hessian(model), step);
}

void StepControl::BeginProblem() {
  radius_ = kFirstRadius;
  keepsRadius_ = false;
  fallBacks_ = 0;
}

bool StepControl::IsOtherBetter(const StepModels& models, const PlannedStep& step,
                                double actual) const {
  const double error = std::abs(actual - models.PredictedDecrease(model_, step.scaled));
  const double other = std::abs(actual - models.PredictedDecrease(Other(model_), step.scaled));
  return kClearlyBetter * other < error;
}

bool StepControl::Judge(const StepModels& models, const PlannedStep& step, double actual) {
  const bool isFinite = std::isfinite(actual);
  const double gainRatio = isFinite ? actual / step.predictedDecrease : -1;
  const bool isTaken = gainRatio > kLeastGainRatio;
  const bool isOtherBetter = isFinite && IsOtherBetter(models, step, actual);
  if (isOtherBetter) model_ = Other(model_);
  // After a refusal the better model deserves the same radius, once.
  keepsRadius_ = isOtherBetter && !isTaken && !keepsRadius_;
  if (!keepsRadius_) radius_ = NextRadius(radius_, step.scaled.norm(), step.isAtEdge, gainRatio);
  return isTaken;
}

void StepControl::Shrink(const PlannedStep& step) {
  radius_ = NextRadius(radius_, step.scaled.norm(), step.isAtEdge, -1);
}

bool StepControl::FallsBackToExact() {
  if (model_ == Model::exact || fallBacks_ >= kMaxFallBacks) return false;
  ++fallBacks_;
  model_ = Model::exact;
  return true;
}

}  // namespace polefit

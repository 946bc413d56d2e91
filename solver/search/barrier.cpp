#include "solver/search/barrier.h"

#include "solver/search/scaling.h"

namespace polefit {

using Eigen::ArrayXd;
using Eigen::VectorXd;

Barrier::Barrier(const Problem& problem, double rho, const VectorXd& parameters)
    : problem_(problem), rho_(rho) {
  lowMultipliers_ = rho_ / LowSlack(parameters);
  highMultipliers_ = rho_ / HighSlack(parameters);
}

double Barrier::Value(const Iterate& iterate) const {
  const VectorXd& parameters = iterate.parameters;
  return iterate.Cost() - rho_ * (LowSlack(parameters) * HighSlack(parameters)).log().sum();
}

StepModels Barrier::ModelsAt(const Iterate& iterate, const ArrayXd& scales) const {
  const auto low = LowSlack(iterate.parameters);
  const auto high = HighSlack(iterate.parameters);
  StepModels models = ScaledModels(iterate.fit, scales);
  models.gradient.array() += scales * (rho_ / high - rho_ / low);
  const ArrayXd curvature = scales.square() * (lowMultipliers_ / low + highMultipliers_ / high);
  for (Eigen::MatrixXd& hessian : models.hessians) hessian.diagonal().array() += curvature;
  return models;
}

bool Barrier::Dominates(double cost) const {
  constexpr double kTooMuch = 0.3;
  return 2 * static_cast<double>(problem_.lower.size()) * rho_ > kTooMuch * cost;
}

void Barrier::MoveMultipliers(const VectorXd& before, const VectorXd& after) {
  const ArrayXd step = (after - before).head(problem_.lower.size()).array();
  lowMultipliers_ = (rho_ - lowMultipliers_ * step) / LowSlack(before);
  highMultipliers_ = (rho_ + highMultipliers_ * step) / HighSlack(before);
  Safeguard(after);
}

void Barrier::LowerRho(double rho, const VectorXd& parameters) {
  rho_ = rho;
  Safeguard(parameters);
}

/// Keeps the multipliers within a factor of what the barrier alone would have.
void Barrier::Safeguard(const VectorXd& parameters) {
  constexpr double kFactor = 1000;
  const auto keep = [&](ArrayXd& multipliers, const auto& slack) {
    multipliers = multipliers.max(rho_ / slack / kFactor).min(rho_ / slack * kFactor).eval();
  };
  keep(lowMultipliers_, LowSlack(parameters));
  keep(highMultipliers_, HighSlack(parameters));
}

}  // namespace polefit

#include "solver/search/orca.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "solver/search/trust_region.h"

namespace polefit {

using Eigen::ArrayXd;
using Eigen::MatrixXd;
using Eigen::VectorXd;

namespace {

constexpr double kFirstRadius = 0.3;
/// A step is taken when this share of the predicted decrease came true.
constexpr double kTakenShare = 1e-4;
/// A shorter scaled step is none.
constexpr double kLeastScaledStep = 1e-9;

/// How far along the omega axis |H| and the delay count.
double EndOfBand(const Problem& problem) {
  if (problem.Equalises()) return problem.largest;
  const double passband = problem.rows.frequencies.maxCoeff();
  if (problem.rows.delayFrequencies.size() == 0) return passband;
  return std::max(passband, problem.rows.delayFrequencies.maxCoeff());
}

/// The natural size of a change of each of ORCA's variables: the distance to the part of the omega
/// axis that counts, which sets how sharp a feature of |H| a location makes there.
ArrayXd Scales(const Problem& problem, const VectorXd& parameters) {
  constexpr double kLeast = 1e-3;
  const double end = EndOfBand(problem);
  ArrayXd scales(problem.constellation.orcaCount);
  for (const Factor& factor : problem.constellation.factors) {
    if (factor.parameter >= problem.constellation.orcaCount) continue;
    const double location = parameters[factor.parameter];
    double scale = factor.kind == FactorKind::omegaZero ? 0.3 * location : location;
    if (factor.IsPair()) {
      const double beyond = parameters[factor.parameter + 1] - end;
      if (beyond > 0) scale = std::hypot(location, beyond);
      scales[factor.parameter + 1] = std::max(kLeast, scale);
    }
    scales[factor.parameter] = std::max(kLeast, scale);
  }
  return scales;
}

MatrixXd Scaled(const MatrixXd& hessian, const ArrayXd& scales) {
  return scales.matrix().asDiagonal() * hessian * scales.matrix().asDiagonal();
}

}  // namespace

/// F - rho sum(ln(x - lower) + ln(upper - x)) with multipliers of the bounds.
struct Orca::Barrier {
  const Problem& problem;
  double rho;
  ArrayXd lowMultipliers;
  ArrayXd highMultipliers;

  // The way to each bound; an expression, so that no array is made for it.
  auto LowSlack(const VectorXd& parameters) const {
    return parameters.head(problem.lower.size()).array() - problem.lower.array();
  }
  auto HighSlack(const VectorXd& parameters) const {
    return problem.upper.array() - parameters.head(problem.upper.size()).array();
  }

  Barrier(const Problem& theProblem, double theRho, const VectorXd& parameters)
      : problem(theProblem), rho(theRho) {
    lowMultipliers = rho / LowSlack(parameters);
    highMultipliers = rho / HighSlack(parameters);
  }

  double Value(const Point& point) const {
    return point.Cost() -
           rho * (LowSlack(point.parameters) * HighSlack(point.parameters)).log().sum();
  }
  // The derivatives are those by the scaled variables.
  VectorXd Gradient(const Point& point, const ArrayXd& scales) const {
    return scales * (point.fit.gradient.array() - rho / LowSlack(point.parameters) +
                     rho / HighSlack(point.parameters));
  }
  MatrixXd Hessian(const MatrixXd& ofCost, const VectorXd& parameters,
                   const ArrayXd& scales) const {
    MatrixXd hessian = Scaled(ofCost, scales);
    hessian.diagonal().array() += scales.square() * (lowMultipliers / LowSlack(parameters) +
                                                     highMultipliers / HighSlack(parameters));
    return hessian;
  }

  /// The penalty dominates F, so that a smaller rho tells more.
  bool Dominates(double cost) const {
    return 2 * static_cast<double>(problem.lower.size()) * rho > 0.3 * cost;
  }

  /// Newton's step for multiplier * slack = rho, from before the step to its end.
  void MoveMultipliers(const VectorXd& before, const VectorXd& after) {
    const ArrayXd step = (after - before).head(problem.lower.size()).array();
    Move(lowMultipliers, LowSlack(before), LowSlack(after), step);
    Move(highMultipliers, HighSlack(before), HighSlack(after), -step);
  }

  void LowerRho(double smaller, const VectorXd& parameters) {
    rho = smaller;
    Keep(lowMultipliers, LowSlack(parameters));
    Keep(highMultipliers, HighSlack(parameters));
  }

 private:
  template <class Slack, class Step>
  void Move(ArrayXd& multipliers, const Slack& before, const Slack& after, const Step& step) const {
    multipliers = (rho - multipliers * step) / before;
    Keep(multipliers, after);
  }
  template <class Slack>
  void Keep(ArrayXd& multipliers, const Slack& slack) const {
    constexpr double kFactor = 1000;
    multipliers = multipliers.max(rho / slack / kFactor).min(rho / slack * kFactor);
  }
};

Orca::Orca(const Problem& problem, Evaluator& evaluator, Listener& listener)
    : problem_(problem), options_(problem.options), evaluator_(evaluator), listener_(listener) {}

/// Moves every variable off its bounds by 1 % of its range or size, whichever is less.
void Orca::MoveInside(VectorXd& parameters) const {
  const ArrayXd range = (problem_.upper - problem_.lower).array();
  const ArrayXd margin = 0.01 * range.min(1.0).min(Scales(problem_, parameters).max(0.05));
  auto variables = parameters.head(Size()).array();
  variables =
      variables.max(problem_.lower.array() + margin).min(problem_.upper.array() - margin).eval();
}

StartSummary Orca::Run(StartKind kind, const VectorXd& parameters, int maxPolishSteps) {
  StartSummary summary;
  summary.kind = kind;
  const int before = evaluator_.Count();
  evaluator_.ForgetBest();
  current_.parameters = parameters;
  MoveInside(current_.parameters);
  evaluator_.Evaluate(current_);
  if (current_.isFinite) {
    summary.ending = RunBarriers();
    if (summary.ending == EndReason::zero) summary.ending = Polish(maxPolishSteps);
  }
  if (evaluator_.Stopped()) summary.ending = *evaluator_.Stopped();
  summary.best = evaluator_.Best();
  summary.evaluations = evaluator_.Count() - before;
  return summary;
}

void Orca::PolishOn(StartSummary& summary, int maxSteps) {
  const int before = evaluator_.Count();
  evaluator_.ForgetBest();
  current_ = summary.best;
  const EndReason ending = Polish(maxSteps);
  if (!evaluator_.Stopped()) summary.ending = ending;
  if (current_.Cost() < summary.best.Cost()) summary.best = current_;
  summary.evaluations += evaluator_.Count() - before;
}

/// The barrier problems of one start; zero when the polish may follow.
EndReason Orca::RunBarriers() {
  const double bounds = 2.0 * Size();
  Barrier barrier(problem_, 0.01 * current_.Cost() / bounds, current_.parameters);
  double former = current_.Cost();
  for (int problem = 1; problem <= options_.maxIterations[0]; ++problem) {
    int steps = 0;
    const EndReason ending = SolveBarrier(barrier, problem, steps);
    listener_.ProblemEnded({problem, barrier.rho, steps, ending, evaluator_.Count(), &current_});
    if (evaluator_.Stopped()) return ending;
    // A schedule of RHO that did not follow F would waste steps on a barrier larger than F.
    const double cost = current_.Cost();
    const double accuracy = options_.accuracy * Level();
    const bool isAccurate = bounds * barrier.rho < accuracy && std::abs(cost - former) < accuracy;
    if (isAccurate) break;
    former = cost;
    barrier.LowerRho(std::min(barrier.rho / options_.ratio, 0.01 * cost / bounds),
                     current_.parameters);
  }
  return EndReason::zero;
}

/// Steps until the problem is solved, until its barrier dominates F, or STEPSLIM.
EndReason Orca::SolveBarrier(Barrier& barrier, int problem, int& steps) {
  double radius = kFirstRadius;
  for (steps = 0; steps < options_.maxSteps; ++steps) {
    if (barrier.Dominates(current_.Cost())) return EndReason::rho;
    const std::optional<EndReason> ending = BarrierStep(barrier, radius);
    if (ending) return *ending;
    listener_.StepTaken({problem, steps + 1, evaluator_.Count(), barrier.rho, radius, &current_});
  }
  return EndReason::stepsLim;
}

/// The share of a step that goes 99.5 % of the way to a bound, at most 1.
double Orca::CutAtBounds(const VectorXd& step) const {
  constexpr double kShareOfWay = 0.995;
  double share = 1;
  for (int i = 0; i < Size(); ++i) {
    const double way = step[i] < 0 ? problem_.lower[i] - current_.parameters[i]
                                   : problem_.upper[i] - current_.parameters[i];
    if (share * std::abs(step[i]) > kShareOfWay * std::abs(way)) {
      share = kShareOfWay * std::abs(way / step[i]);
    }
  }
  return share;
}

/// One trust-region step of a barrier problem; how the problem ends, if it does.
std::optional<EndReason> Orca::BarrierStep(Barrier& barrier, double& radius) {
  const ArrayXd scales = Scales(problem_, current_.parameters);
  const VectorXd gradient = barrier.Gradient(current_, scales);
  MatrixXd hessian = barrier.Hessian(current_.fit.hessian, current_.parameters, scales);
  TrustStep trust = SolveTrustRegion(gradient, hessian, radius);
  if (options_.gradientWhenIndefinite && trust.isIndefinite) {
    hessian = barrier.Hessian(current_.fit.gaussNewton, current_.parameters, scales);
    trust = SolveTrustRegion(gradient, hessian, radius);
  }
  if (trust.predictedDecrease <= 0.01 * options_.tolerance[0] * Level() ||
      trust.step.norm() <= kLeastScaledStep) {
    return EndReason::zero;
  }
  VectorXd step = scales * trust.step.array();
  const double share = CutAtBounds(step);
  if (share < 1) {
    step *= share;
    trust.step *= share;
    trust.predictedDecrease = PredictedDecrease(gradient, hessian, trust.step);
  }
  Try(current_.parameters.head(Size()) + step);
  if (evaluator_.Stopped()) return evaluator_.Stopped();
  const double gained =
      trial_.isFinite ? (barrier.Value(current_) - barrier.Value(trial_)) / trust.predictedDecrease
                      : -1;
  radius = NextRadius(radius, trust.step.norm(), trust.isAtEdge, gained);
  if (gained > kTakenShare) {
    barrier.MoveMultipliers(current_.parameters, trial_.parameters);
    std::swap(current_, trial_);
  }
  return std::nullopt;
}

/// Evaluates the trial point with these variables, from the present equalised zeros.
bool Orca::Try(const VectorXd& variables) {
  trial_.parameters = current_.parameters;
  trial_.parameters.head(Size()) = variables;
  return evaluator_.Evaluate(trial_);
}

/// Puts the variables that stand close to a bound and are pushed towards it onto the bound, where
/// that does not raise F.
void Orca::PutOntoBounds() {
  constexpr double kClose = 0.002;
  const ArrayXd scales = Scales(problem_, current_.parameters);
  VectorXd variables = current_.parameters.head(Size());
  for (int i = 0; i < Size(); ++i) {
    const double slope = current_.fit.gradient[i];
    const double close = kClose * scales[i];
    if (slope > 0 && variables[i] - problem_.lower[i] < close) variables[i] = problem_.lower[i];
    if (slope < 0 && problem_.upper[i] - variables[i] < close) variables[i] = problem_.upper[i];
  }
  if (variables == current_.parameters.head(Size())) return;
  if (Try(variables) && trial_.Cost() <= current_.Cost()) std::swap(current_, trial_);
}

/// 1 for every variable that may move, 0 for those held by a bound they are pushed towards.
VectorXd Orca::FreeVariables() const {
  VectorXd free = VectorXd::Ones(Size());
  for (int i = 0; i < Size(); ++i) {
    const double slope = current_.fit.gradient[i];
    const double value = current_.parameters[i];
    const bool isHeld =
        (slope > 0 && value <= problem_.lower[i]) || (slope < 0 && value >= problem_.upper[i]);
    if (isHeld) free[i] = 0;
  }
  return free;
}

/// Newton steps without a barrier, which keeps the best point off its bounds by a little.
EndReason Orca::Polish(int maxSteps) {
  constexpr int kSmallGains = 4;
  PutOntoBounds();
  double radius = kFirstRadius;
  int smallGains = 0;
  EndReason ending = EndReason::stepsLim;
  int steps = 0;
  while (steps < maxSteps) {
    const std::optional<EndReason> ended = PolishStep(radius, smallGains);
    if (ended) {
      ending = *ended;
      break;
    }
    ++steps;
    listener_.StepTaken({0, steps, evaluator_.Count(), 0, radius, &current_});
    if (smallGains >= kSmallGains) {
      ending = EndReason::zero;
      break;
    }
  }
  listener_.ProblemEnded({0, 0, steps, ending, evaluator_.Count(), &current_});
  return ending;
}

/// A trust-region Newton step of the free variables, cut off at the bounds one by one.
std::optional<EndReason> Orca::PolishStep(double& radius, int& smallGains) {
  const VectorXd free = FreeVariables();
  const ArrayXd scales = Scales(problem_, current_.parameters);
  const VectorXd gradient = scales * free.array() * current_.fit.gradient.array();
  MatrixXd hessian = Scaled(current_.fit.hessian, scales * free.array());
  hessian.diagonal() += (VectorXd::Ones(Size()) - free) * hessian.diagonal().cwiseAbs().sum();
  const TrustStep trust = SolveTrustRegion(gradient, hessian, radius);
  const double least = 1e-4 * options_.accuracy * Level();
  if (trust.predictedDecrease <= least || trust.step.norm() <= kLeastScaledStep) {
    return EndReason::zero;
  }

  const VectorXd before = current_.parameters.head(Size());
  const VectorXd wanted = before + (scales * trust.step.array()).matrix();
  const VectorXd variables = wanted.cwiseMax(problem_.lower).cwiseMin(problem_.upper);
  const VectorXd scaledStep = ((variables - before).array() / scales).matrix();
  const double predicted = PredictedDecrease(gradient, hessian, scaledStep);
  double gained = -1;
  if (predicted > 0) {
    Try(variables);
    if (evaluator_.Stopped()) return evaluator_.Stopped();
    if (trial_.isFinite) gained = (current_.Cost() - trial_.Cost()) / predicted;
  }
  radius = NextRadius(radius, trust.step.norm(), trust.isAtEdge, gained);
  if (gained <= kTakenShare) return std::nullopt;
  const double gain = current_.Cost() - trial_.Cost();
  smallGains = gain < 0.1 * options_.accuracy * Level() ? smallGains + 1 : 0;
  std::swap(current_, trial_);
  return std::nullopt;
}

}  // namespace polefit

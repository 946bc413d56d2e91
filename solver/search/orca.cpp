#include "solver/search/orca.h"

#include <cmath>
#include <limits>
#include <utility>

#include "solver/search/endings.h"
#include "solver/search/projected_step.h"
#include "solver/search/scaling.h"
#include "solver/search/trust_region.h"

namespace polefit {

using Eigen::ArrayXd;
using Eigen::VectorXd;

namespace {

/// A shorter scaled step is none.
constexpr double kLeastScaledStep = 1e-9;
/// The barrier's whole weight at the start of each problem, as a share of F. A schedule of RHO that
/// did not follow F would waste steps on a barrier larger than F.
constexpr double kBarrierShare = 0.01;

/// Not higher but for rounding.
bool IsAsLow(const Iterate& one, const Iterate& other) {
  constexpr double kRounding = 1e-12;
  return one.isFinite && one.Cost() <= (1 + kRounding) * other.Cost();
}

Model FirstModel(const Options& options) {
  return options.beginsWithGaussNewton ? Model::gaussNewton : Model::exact;
}

}  // namespace

Orca::Orca(const Problem& problem, Evaluator& evaluator, Listener& listener)
    : problem_(problem),
      options_(problem.options),
      evaluator_(evaluator),
      listener_(listener),
      control_(FirstModel(problem.options)) {}

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
  control_ = StepControl(FirstModel(options_));
  current_.parameters = parameters;
  MoveInside(current_.parameters);
  evaluator_.Evaluate(current_);
  if (current_.isFinite) {
    summary.ending = RunBarriers();
    if (summary.ending == EndReason::converged) summary.ending = Polish(maxPolishSteps);
  }
  if (evaluator_.Stopped()) summary.ending = *evaluator_.Stopped();
  summary.best = IsAsLow(current_, evaluator_.Best()) ? current_ : evaluator_.Best();
  summary.evaluations = evaluator_.Count() - before;
  return summary;
}

void Orca::PolishOn(StartSummary& summary, int maxSteps) {
  const int before = evaluator_.Count();
  evaluator_.ForgetBest();
  current_ = summary.best;
  const EndReason ending = Polish(maxSteps);
  if (!evaluator_.Stopped()) summary.ending = ending;
  if (IsAsLow(current_, summary.best)) summary.best = current_;
  summary.evaluations += evaluator_.Count() - before;
}

/// The barrier problems of one start; converged when the polish may follow.
EndReason Orca::RunBarriers() {
  Barrier barrier(problem_, kBarrierShare * current_.Cost() / (2.0 * Size()), current_.parameters);
  double former = current_.Cost();
  for (int problem = 1; problem <= options_.maxIterations[0]; ++problem) {
    int steps = 0;
    const EndReason ending = SolveBarrier(barrier, problem, steps);
    listener_.ProblemEnded({problem, barrier.Rho(), steps, ending, evaluator_.Count(), &current_});
    if (evaluator_.Stopped()) return ending;
    const double accuracy = options_.accuracy * CostOrFloor();
    const bool isAccurate =
        2.0 * Size() * barrier.Rho() < accuracy && std::abs(current_.Cost() - former) < accuracy;
    if (isAccurate) break;
    former = current_.Cost();
    barrier.LowerRho(NextRho(barrier.Rho()), current_.parameters);
  }
  return EndReason::converged;
}

double Orca::NextRho(double rho) const {
  return std::min(rho / options_.ratio, kBarrierShare * current_.Cost() / (2.0 * Size()));
}

/// Steps until the problem is solved, until its barrier dominates F, or STEPSLIM.
EndReason Orca::SolveBarrier(Barrier& barrier, int problem, int& steps) {
  const auto leastDecrease = [this] { return 0.01 * options_.tolerance[0] * CostOrFloor(); };
  control_.BeginProblem();
  for (steps = 0; steps < options_.maxSteps; ++steps) {
    if (barrier.Dominates(current_.Cost())) return EndReason::rho;
    const ArrayXd scales = Scales(problem_, current_.parameters);
    const StepModels models = barrier.ModelsAt(current_, scales);
    PlannedStep step = PlanBarrierStep(models, scales);
    while (IsNoStep(step, leastDecrease())) {
      if (!control_.FallsBackToExact()) return EndReason::converged;
      step = PlanBarrierStep(models, scales);
    }
    CutAtBounds(step, models);
    Try(step.variables);
    if (evaluator_.Stopped()) return *evaluator_.Stopped();
    const double actual = trial_.isFinite ? barrier.Value(current_) - barrier.Value(trial_)
                                          : -std::numeric_limits<double>::infinity();
    if (control_.Judge(models, step, actual)) {
      barrier.MoveMultipliers(current_.parameters, trial_.parameters);
      std::swap(current_, trial_);
    }
    listener_.StepTaken(
        {problem, steps + 1, evaluator_.Count(), barrier.Rho(), control_.Radius(), &current_});
  }
  return EndReason::stepsLim;
}

PlannedStep Orca::PlanBarrierStep(const StepModels& models, const ArrayXd& scales) const {
  const TrustStep trust =
      SolveTrustRegion(models.gradient, models.Hessian(control_.CurrentModel()), control_.Radius());
  return {trust.step, current_.parameters.head(Size()) + (scales * trust.step.array()).matrix(),
          trust.predictedDecrease, trust.isAtEdge, false};
}

bool Orca::IsNoStep(const PlannedStep& step, double leastDecrease) const {
  return step.predictedDecrease <= leastDecrease || step.scaled.norm() <= kLeastScaledStep;
}

/// Bounds have cut it so that it predicts no decrease; a shorter one does.
bool Orca::IsTooLong(const PlannedStep& step) {
  return step.isProjected && step.predictedDecrease <= 0 && step.scaled.norm() > kLeastScaledStep;
}

/// Cuts a step at 99.5 % of the way to a bound, so that the barrier stays finite.
void Orca::CutAtBounds(PlannedStep& step, const StepModels& models) const {
  constexpr double kShareOfSlack = 0.995;
  const VectorXd variables = current_.parameters.head(Size());
  const VectorXd whole = step.variables - variables;
  double share = 1;
  for (int i = 0; i < Size(); ++i) {
    const double slack =
        std::abs((whole[i] < 0 ? problem_.lower[i] : problem_.upper[i]) - variables[i]);
    if (share * std::abs(whole[i]) > kShareOfSlack * slack) {
      share = kShareOfSlack * slack / std::abs(whole[i]);
    }
  }
  if (share == 1) return;
  step.scaled *= share;
  step.variables = variables + share * whole;
  step.predictedDecrease = models.PredictedDecrease(control_.CurrentModel(), step.scaled);
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
  if (Try(variables) && IsAsLow(trial_, current_)) std::swap(current_, trial_);
}

/// Steps without a barrier, which keeps the best point off its bounds by a little.
EndReason Orca::Polish(int maxSteps) {
  PutOntoBounds();
  int steps = 0;
  EndReason ending = TakePolishSteps(maxSteps, steps);
  // F is even in an imaginary part, so that steps come next to the sigma axis but not onto it.
  if (ending == EndReason::converged && evaluator_.Left() > 0) PutOntoBounds();
  if (ending == EndReason::converged && IsLastZeroAtBound(problem_, current_))
    ending = EndReason::atBound;
  listener_.ProblemEnded({0, 0, steps, ending, evaluator_.Count(), &current_});
  return ending;
}

EndReason Orca::TakePolishSteps(int maxSteps, int& steps) {
  constexpr int kSmallDecreases = 4;
  int smallDecreases = 0;
  control_.BeginProblem();
  for (steps = 0; steps < maxSteps && smallDecreases < kSmallDecreases; ++steps) {
    const double leastDecrease = 1e-4 * options_.accuracy * CostOrFloor();
    const ArrayXd scales = Scales(problem_, current_.parameters);
    const StepModels models = ScaledModels(current_.fit, scales);
    const Box box = {problem_.lower, problem_.upper, current_.parameters.head(Size()), scales};
    const auto plan = [&] {
      return ProjectedStep(models, control_.CurrentModel(), control_.Radius(), box);
    };
    PlannedStep step = plan();
    while (IsNoStep(step, leastDecrease)) {
      if (IsTooLong(step)) {
        control_.Shrink(step);
      } else if (!control_.FallsBackToExact()) {
        return EndReason::converged;
      }
      step = plan();
    }
    Try(step.variables);
    if (evaluator_.Stopped()) return *evaluator_.Stopped();
    const double decrease = current_.Cost() - trial_.Cost();
    const bool isSmall = !step.isAtEdge && decrease < 0.1 * options_.accuracy * CostOrFloor();
    if (control_.Judge(models, step, decrease)) {
      smallDecreases = isSmall ? smallDecreases + 1 : 0;
      std::swap(current_, trial_);
    }
    listener_.StepTaken({0, steps + 1, evaluator_.Count(), 0, control_.Radius(), &current_});
  }
  return smallDecreases < kSmallDecreases ? EndReason::stepsLim : EndReason::converged;
}

}  // namespace polefit

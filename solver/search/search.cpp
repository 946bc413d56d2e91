#include "solver/search/search.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "solver/search/second_starts.h"

namespace polefit {

namespace {

/// A run ends early when so many starts agree.
constexpr int kWantedAgreement = 6;
/// A second start that is still creeping after so many steps is not worth more evaluations.
constexpr int kSecondPolishSteps = 40;
/// Starts that end within this share of the best F agree with it.
constexpr double kAgreement = 0.001;
/// Another start's answer must be lower than the typed start's by this share to replace it.
constexpr double kReplacement = 0.01;

double LowestCost(const Summary& summary) {
  double lowest = std::numeric_limits<double>::infinity();
  for (const StartSummary& start : summary.starts) lowest = std::min(lowest, start.best.Cost());
  return lowest;
}

bool WantsAnotherStart(const Summary& summary, const Evaluator& evaluator) {
  if (evaluator.Stopped()) return false;
  const double typed = summary.starts.front().evaluations;
  return summary.StartsNear(LowestCost(summary)) < kWantedAgreement &&
         evaluator.Left() >= std::max(30.0, 0.3 * typed);
}

/// The typed start, unless another one is lower by more than rounding and luck.
std::size_t Choose(const Summary& summary) {
  const std::vector<StartSummary>& starts = summary.starts;
  std::size_t lowest = 0;
  for (std::size_t i = 1; i < starts.size(); ++i) {
    if (starts[i].best.Cost() < starts[lowest].best.Cost()) lowest = i;
  }
  const double typed = starts.front().best.Cost();
  const bool isMuchLower =
      typed > summary.negligible && !(starts[lowest].best.Cost() > (1 - kReplacement) * typed);
  return isMuchLower ? lowest : 0;
}

/// Only the typed start must have ended; the others are an extra. A request always shows.
EndReason EndingOf(const Summary& summary, const Evaluator& evaluator) {
  if (evaluator.Stopped() == EndReason::requested) return EndReason::requested;
  const StartSummary& chosen = summary.starts[summary.chosen];
  if (chosen.HasEnded()) return chosen.ending;
  return summary.starts.front().HasEnded() ? EndReason::zero : EndReason::evalMax;
}

}  // namespace

int Summary::StartsNear(double cost) const {
  const double nearest = std::max(kAgreement * cost, negligible);
  return static_cast<int>(
      std::count_if(starts.begin(), starts.end(), [cost, nearest](const StartSummary& start) {
        return start.best.isFinite && std::abs(start.best.Cost() - cost) <= nearest;
      }));
}

Summary Solve(const Problem& problem, Listener& listener,
              const std::function<bool()>& isStopRequested) {
  Evaluator evaluator(problem, listener, isStopRequested);
  Orca orca(problem, evaluator, listener);
  Summary summary;
  summary.negligible = evaluator.Negligible();
  summary.typedCost = Objective(problem.constellation, problem.rows, false)
                          .CostWithGain(problem.typedParameters, problem.typedGain);
  listener.StartBegan(1, StartKind::typed);
  summary.starts.push_back(
      orca.Run(StartKind::typed, problem.typedParameters, problem.options.maxSteps));

  SecondStarts seconds(problem);
  while (WantsAnotherStart(summary, evaluator)) {
    const Point& best = summary.starts[Choose(summary)].best;
    StartKind kind = StartKind::standard;
    const Eigen::VectorXd start =
        seconds.Next(best.isFinite ? best.parameters : problem.typedParameters, kind);
    listener.StartBegan(static_cast<int>(summary.starts.size()) + 1, kind);
    const int polishSteps = std::min(problem.options.maxSteps, kSecondPolishSteps);
    summary.starts.push_back(orca.Run(kind, start, polishSteps));
  }
  summary.chosen = Choose(summary);
  StartSummary& chosen = summary.starts[summary.chosen];
  const int stepsLeft = problem.options.maxSteps - kSecondPolishSteps;
  if (summary.chosen > 0 && chosen.ending == EndReason::stepsLim && stepsLeft > 0) {
    listener.StartBegan(static_cast<int>(summary.chosen) + 1, chosen.kind);
    orca.PolishOn(chosen, stepsLeft);
  }
  summary.best = chosen.best;
  summary.evaluations = evaluator.Count();
  summary.retries = evaluator.RetryCount();
  summary.ending = EndingOf(summary, evaluator);
  return summary;
}

}  // namespace polefit

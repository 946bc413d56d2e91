#include "solver/search/search.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "solver/search/data_start.h"
#include "solver/search/endings.h"
#include "solver/search/second_starts.h"
#include "solver/search/stopping.h"
#include "solver/search/structure.h"

namespace polefit {

using Eigen::VectorXd;

namespace {

/// A further start that is still creeping after so many steps is not worth more evaluations.
constexpr int kFurtherPolishSteps = 40;
/// Another start's answer must be lower than the typed start's by this share to replace it.
constexpr double kReplacement = 0.001;
/// Going on with a polish pays while it lowers F by this share, as long as the evaluations for
/// other starts are not used up.
constexpr double kWorthwhile = 0.01;
constexpr double kShareForGoingOn = 0.75;

class Search {
 public:
  Search(const Problem& problem, Listener& listener, const std::function<bool()>& isStopRequested)
      : problem_(problem),
        listener_(listener),
        isStopRequested_(isStopRequested),
        evaluator_(problem, listener, isStopRequested),
        orca_(problem, evaluator_, listener) {
    summary_.negligible = evaluator_.Negligible();
    summary_.typedCost = Objective(problem.constellation, problem.rows)
                             .CostWithGain(problem.typedParameters, problem.typedGain);
  }

  Summary Run() {
    const StartKind first = problem_.startsFromPoints ? StartKind::data : StartKind::typed;
    RunStart(first, problem_.typedParameters, problem_.options.maxSteps);
    RunDataStart();
    GoOn(Chosen());
    RunFurtherStarts();
    PartMetZeros();
    GoOn(Chosen());
    PreferConverged();
    if (Best().isFinite) TryOtherStructures();
    Conclude();
    return summary_;
  }

 private:
  StartSummary& Chosen() { return summary_.starts[summary_.chosen]; }
  const Iterate& Best() { return Chosen().best; }

  void RunStart(StartKind kind, const VectorXd& parameters, int maxPolishSteps) {
    listener_.StartBegan(static_cast<int>(summary_.starts.size()) + 1, kind);
    summary_.starts.push_back(orca_.Run(kind, parameters, maxPolishSteps));
    Choose();
  }

  /// The typed start, unless another one is lower by more than rounding and luck.
  void Choose() {
    const std::vector<StartSummary>& starts = summary_.starts;
    const auto lowest = std::min_element(starts.begin(), starts.end(),
                                         [](const StartSummary& one, const StartSummary& other) {
                                           return one.best.Cost() < other.best.Cost();
                                         });
    const double typed = starts.front().best.Cost();
    const bool isLower =
        typed > summary_.negligible && !(lowest->best.Cost() > (1 - kReplacement) * typed);
    summary_.chosen = isLower ? static_cast<std::size_t>(lowest - starts.begin()) : 0;
    summary_.best = Best();
    CountOptima(summary_);
  }

  /// An answer that was cut short gives way to the lowest of the starts that converged as low.
  void PreferConverged() {
    if (Chosen().HasConverged() || summary_.IsExact() || summary_.optima.empty()) return;
    const double lowest = summary_.optima.front().cost;
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < summary_.starts.size(); ++i) {
      const StartSummary& start = summary_.starts[i];
      const double cost = start.best.Cost();
      const bool isAsLow = start.HasConverged() && IsSameCost(cost, lowest, summary_.negligible);
      if (!isAsLow || cost >= least) continue;
      least = cost;
      summary_.chosen = i;
    }
    summary_.best = Best();
    CountOptima(summary_);
  }

  void RunDataStart() {
    if (problem_.startsFromPoints || IsOver()) return;
    const std::optional<DataStart> start = FindDataStart(problem_);
    if (start) RunStart(StartKind::data, start->parameters, problem_.options.maxSteps);
  }

  bool IsOver() const { return evaluator_.Stopped() || HasSeenEnough(summary_); }

  /// Polishes on what STEPSLIM has ended, while that pays.
  void GoOn(StartSummary& start) {
    const auto number = static_cast<int>(summary_.chosen) + 1;
    while (start.ending == EndReason::stepsLim && start.best.Cost() > summary_.negligible &&
           evaluator_.Count() < kShareForGoingOn * problem_.options.maxEvaluations) {
      const double before = start.best.Cost();
      listener_.StartBegan(number, start.kind);
      orca_.PolishOn(start, problem_.options.maxSteps);
      if (!(start.best.Cost() < (1 - kWorthwhile) * before)) break;
    }
    Choose();
  }

  void RunFurtherStarts() {
    SecondStarts further(problem_);
    const int steps = std::min(problem_.options.maxSteps, kFurtherPolishSteps);
    while (!IsOver() && HasEvaluationsForAStart()) {
      StartKind kind = StartKind::standard;
      const VectorXd start =
          further.Next(Best().isFinite ? Best().parameters : problem_.typedParameters, kind);
      const std::size_t former = summary_.chosen;
      RunStart(kind, start, steps);
      if (summary_.chosen != former) GoOn(Chosen());
    }
  }

  bool HasEvaluationsForAStart() const {
    const double typed = summary_.starts.front().evaluations;
    return evaluator_.Left() >= std::max(30.0, 0.3 * typed);
  }

  /// Parts omega-axis zeros that have met: first from where they met up to question 14, then over
  /// the whole range.
  void PartMetZeros() {
    const double largest = problem_.largest;
    for (const bool isWide : {false, true}) {
      if (evaluator_.Stopped() || summary_.IsExact() || !Best().isFinite) return;
      VectorXd parted = Best().parameters;
      const auto groups = MetZeros(problem_, Best());
      if (groups.empty()) return;
      for (const auto& group : groups) {
        const auto count = static_cast<double>(group.size());
        for (std::size_t k = 0; k < group.size(); ++k) {
          double& zero = parted[problem_.constellation.factors[group[k]].parameter];
          const auto place = static_cast<double>(k);
          zero = isWide ? std::pow(largest, (place + 0.5) / count)
                        : zero * std::pow(largest / zero, place / count);
        }
      }
      RunStart(StartKind::parted, parted, problem_.options.maxSteps);
    }
  }

  void TryOtherStructures() {
    if (evaluator_.Stopped() || summary_.IsExact()) return;
    SplitPairs();
    JoinMetZeros();
  }

  /// What the structure reaches with the pairs on the sigma axis split into single poles.
  void SplitPairs() {
    constexpr double kNearer = 0.8;
    constexpr double kFarther = 1.25;
    const std::vector<std::size_t> pairs = PairsOnSigmaAxis(problem_, Best());
    if (pairs.empty()) return;
    std::vector<NewFactor> singles;
    for (const std::size_t pair : pairs) {
      const double real = Best().parameters[problem_.constellation.factors[pair].parameter];
      singles.push_back({FactorKind::sigmaPole, kNearer * real});
      singles.push_back({FactorKind::sigmaPole, kFarther * real});
    }
    summary_.splitPairs = TryStructure(Restructured(problem_, Best(), pairs, singles));
  }

  /// Zeros that met want to leave the omega axis: a quad is the numerator that they go on to, a
  /// pair the smaller one that may do as well.
  void JoinMetZeros() {
    const auto groups = MetZeros(problem_, Best());
    summary_.hasMetZeros = !groups.empty();
    if (groups.empty()) return;
    const std::vector<std::size_t> two = {groups[0][0], groups[0][1]};
    const double zero = Best().parameters[problem_.constellation.factors[two[0]].parameter];
    for (const FactorKind kind : {FactorKind::zeroPair, FactorKind::zeroQuad}) {
      const auto tried =
          TryStructure(Restructured(problem_, Best(), two, {{kind, 0.1 * zero, zero}}));
      const std::optional<OtherStructure>& lowest = summary_.joinedZeros;
      if (tried && (!lowest || tried->cost < lowest->cost)) summary_.joinedZeros = tried;
    }
  }

  /// One start of another structure, told to nobody but counted.
  std::optional<OtherStructure> TryStructure(Problem other) {
    other.options.maxEvaluations = LeftForStructures();
    if (other.options.maxEvaluations <= 0) return std::nullopt;
    Listener nobody;
    Evaluator evaluator(other, nobody, isStopRequested_);
    const StartSummary start =
        Orca(other, evaluator, nobody)
            .Run(StartKind::parted, other.typedParameters, other.options.maxSteps);
    structureEvaluations_ += evaluator.Count();
    if (!start.best.isFinite) return std::nullopt;
    return OtherStructure{other.poleCounts, other.zeroCounts, start.best.Cost()};
  }

  int LeftForStructures() const { return evaluator_.Left() - structureEvaluations_; }

  void Conclude() {
    summary_.roundingCost = Best().isFinite ? RoundingCost(problem_, Best()) : 0;
    summary_.evaluations = evaluator_.Count() + structureEvaluations_;
    summary_.retries = evaluator_.RetryCount();
    summary_.ending = JudgedEnding(EndingOfAnswer(), problem_, Best(), summary_.roundingCost);
  }

  /// Only the typed start must have converged; the others are an extra. A request always shows.
  EndReason EndingOfAnswer() {
    if (evaluator_.Stopped() == EndReason::requested) return EndReason::requested;
    if (summary_.IsExact()) return EndReason::converged;
    if (Chosen().HasEnded()) return Chosen().ending;
    const bool hasTypedConverged = summary_.starts.front().HasConverged();
    return hasTypedConverged ? EndReason::converged : EndReason::evalMax;
  }

  const Problem& problem_;
  Listener& listener_;
  const std::function<bool()>& isStopRequested_;
  Evaluator evaluator_;
  Orca orca_;
  Summary summary_;
  int structureEvaluations_ = 0;
};

}  // namespace

Summary Solve(const Problem& problem, Listener& listener,
              const std::function<bool()>& isStopRequested) {
  return Search(problem, listener, isStopRequested).Run();
}

}  // namespace polefit

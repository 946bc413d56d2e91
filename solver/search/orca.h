#pragma once

#include <Eigen/Core>
#include <algorithm>
#include <optional>

#include "solver/problem/problem.h"
#include "solver/search/barrier.h"
#include "solver/search/evaluator.h"
#include "solver/search/listener.h"
#include "solver/search/step_control.h"

namespace polefit {

/// How one start ended.
struct StartSummary {
  StartKind kind = StartKind::typed;
  /// The best point seen; not finite when the start had no finite error anywhere.
  Iterate best;
  int evaluations = 0;
  /// How the polish ended, or what ended the start before it.
  EndReason ending = EndReason::converged;

  bool HasConverged() const { return best.isFinite && IsConverged(ending); }
  /// Not cut short.
  bool HasEnded() const {
    return best.isFinite && (IsConverged(ending) || ending == EndReason::stepsLim);
  }
};

/// ORCA, the outer solver: minimises F over all locations but the equalised zeros, between their
/// bounds, from one start: a sequence of primal-dual barrier problems, each by a trust-region
/// method, then a polish by projected Newton steps, which hits bounds exactly.
/// (J. Nocedal and S. Wright, Numerical Optimization, 2006, chapters 4, 16 and 19.)
class Orca {
 public:
  Orca(const Problem& problem, Evaluator& evaluator, Listener& listener);

  StartSummary Run(StartKind kind, const Eigen::VectorXd& parameters, int maxPolishSteps);

  /// Goes on with the polish of a start that STEPSLIM has ended.
  void PolishOn(StartSummary& summary, int maxSteps);

 private:
  int Size() const { return problem_.constellation.orcaCount; }
  /// What a decrease must be large against to count: F, or the noise floor.
  double CostOrFloor() const { return std::max(current_.Cost(), evaluator_.Negligible()); }
  void MoveInside(Eigen::VectorXd& parameters) const;
  EndReason RunBarriers();
  double NextRho(double rho) const;
  EndReason SolveBarrier(Barrier& barrier, int problem, int& steps);
  PlannedStep PlanBarrierStep(const StepModels& models, const Eigen::ArrayXd& scales) const;
  void CutAtBounds(PlannedStep& step, const StepModels& models) const;
  EndReason Polish(int maxSteps);
  EndReason TakePolishSteps(int maxSteps, int& steps);
  void PutOntoBounds();
  bool IsNoStep(const PlannedStep& step, double leastDecrease) const;
  static bool IsTooLong(const PlannedStep& step);
  bool Try(const Eigen::VectorXd& variables);

  const Problem& problem_;
  const Options& options_;
  Evaluator& evaluator_;
  Listener& listener_;
  StepControl control_;
  Iterate current_;
  Iterate trial_;
};

}  // namespace polefit

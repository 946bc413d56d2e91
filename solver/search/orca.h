#pragma once

#include <Eigen/Core>
#include <algorithm>
#include <optional>

#include "solver/problem/problem.h"
#include "solver/search/evaluator.h"
#include "solver/search/listener.h"

namespace polefit {

/// How one start ended.
struct StartSummary {
  StartKind kind = StartKind::typed;
  /// The best point seen; not finite when the start had no finite error anywhere.
  Point best;
  int evaluations = 0;
  /// How the polish ended, or what ended the start before it.
  EndReason ending = EndReason::zero;

  bool HasEnded() const {
    return best.isFinite && (ending == EndReason::zero || ending == EndReason::stepsLim);
  }
};

/// ORCA, the outer solver: minimises F over all locations but the equalised zeros, between their
/// bounds, from one start: a sequence of primal-dual barrier problems, each by a trust-region
/// Newton method, then a polish with an active set, which hits bounds exactly.
/// (J. Nocedal and S. Wright, Numerical Optimization, 2006, chapters 4, 16 and 19.)
class Orca {
 public:
  Orca(const Problem& problem, Evaluator& evaluator, Listener& listener);

  StartSummary Run(StartKind kind, const Eigen::VectorXd& parameters, int maxPolishSteps);

  /// Goes on with the polish of a start that STEPSLIM has ended.
  void PolishOn(StartSummary& summary, int maxSteps);

 private:
  struct Barrier;

  int Size() const { return problem_.constellation.orcaCount; }
  /// What a gain must be large against to count.
  double Level() const { return std::max(current_.Cost(), evaluator_.Negligible()); }
  void MoveInside(Eigen::VectorXd& parameters) const;
  EndReason RunBarriers();
  EndReason SolveBarrier(Barrier& barrier, int problem, int& steps);
  std::optional<EndReason> BarrierStep(Barrier& barrier, double& radius);
  double CutAtBounds(const Eigen::VectorXd& step) const;
  EndReason Polish(int maxSteps);
  void PutOntoBounds();
  Eigen::VectorXd FreeVariables() const;
  std::optional<EndReason> PolishStep(double& radius, int& smallGains);
  bool Try(const Eigen::VectorXd& variables);

  const Problem& problem_;
  const Options& options_;
  Evaluator& evaluator_;
  Listener& listener_;
  Point current_;
  Point trial_;
};

}  // namespace polefit

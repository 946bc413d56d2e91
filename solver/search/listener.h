#pragma once

#include <Eigen/Core>
#include <string>

namespace polefit {

struct Iterate;

/// Why an iteration, or the whole search, ended.
enum class EndReason {
  converged,
  /// As converged, with the last equalised zero at question 14: an active bound.
  atBound,
  /// The points are typed less finely than they are fitted.
  finerThanTyped,
  /// rms error below 1e-7 of the largest Yout.
  tinyError,
  rho,
  stepsLim,
  evalMax,
  requested
};

/// Whether an end needs no excuse: the answer stands.
constexpr bool IsConverged(EndReason ending) {
  return ending == EndReason::converged || ending == EndReason::atBound ||
         ending == EndReason::finerThanTyped || ending == EndReason::tinyError;
}

/// Where a start comes from.
enum class StartKind { typed, data, standard, perturbed, random, parted };

/// One accepted or refused step of ORCA.
struct StepReport {
  int problem = 0;  ///< 0 in the polish
  int step = 0;
  int evaluations = 0;
  double rho = 0;
  double radius = 0;
  const Iterate* iterate = nullptr;
};

/// The end of a barrier problem, or of the polish as problem 0.
struct ProblemReport {
  int problem = 0;
  double rho = 0;
  int steps = 0;
  EndReason ending = EndReason::converged;
  int evaluations = 0;
  const Iterate* iterate = nullptr;
};

/// Whom the solvers tell what they do. A call must be cheap.
class Listener {
 public:
  virtual ~Listener() = default;
  virtual void StartBegan(int /*start*/, StartKind /*kind*/) {}
  virtual void StepTaken(const StepReport& /*step*/) {}
  virtual void ProblemEnded(const ProblemReport& /*problem*/) {}
  /// LYNX has reached peaks that differ by `mismatch` nepers with `share` of its step.
  virtual void LynxIterated(double /*mismatch*/, double /*share*/) {}
  /// WREN has taken `step` to `frequency`, both normalised.
  virtual void WrenIterated(double /*frequency*/, double /*step*/) {}
};

}  // namespace polefit

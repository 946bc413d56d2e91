#pragma once

#include <functional>
#include <vector>

#include "solver/problem/problem.h"
#include "solver/search/listener.h"
#include "solver/search/orca.h"

namespace polefit {

/// The outcome of a whole run.
struct Summary {
  /// zero: converged.
  EndReason ending = EndReason::zero;
  /// The answer; not finite when no start gave a finite error.
  Point best;
  /// F of the locations and the gain as typed.
  double typedCost = 0;
  std::vector<StartSummary> starts;
  /// The start that the answer comes from.
  std::size_t chosen = 0;
  int evaluations = 0;
  /// Equalisations that failed, so that ORCA shortened its step.
  int retries = 0;

  /// An F as good as 0.
  double negligible = 0;

  /// How many starts ended, or were cut short, within 0.1 % of an F.
  int StartsNear(double cost) const;
};

/// Solves a problem: the typed start, then second starts until six have ended within 0.1 % of the
/// best or the evaluations left are fewer than max(30, 0.3 of what the typed start took).
/// Equal problems give equal summaries.
Summary Solve(const Problem& problem, Listener& listener,
              const std::function<bool()>& isStopRequested);

}  // namespace polefit

#pragma once

#include <array>
#include <functional>
#include <optional>
#include <vector>

#include "solver/problem/problem.h"
#include "solver/search/listener.h"
#include "solver/search/orca.h"

namespace polefit {

/// A place where starts ended: all within 0.1 % of its F, or below the noise floor.
struct Optimum {
  double cost = 0;
  int starts = 0;
  int witnesses = 0;
  /// Whether any of the starts converged there; otherwise it is only where they were cut short.
  bool isConverged = false;
};

/// What another structure of H(s) reaches from the answer.
struct OtherStructure {
  std::array<int, 2> poleCounts = {};  ///< as question 6
  std::array<int, 3> zeroCounts = {};  ///< as question 11
  double cost = 0;
};

/// The outcome of a whole run.
struct Summary {
  /// How the answer ended.
  EndReason ending = EndReason::converged;
  /// The answer; not finite when no start gave a finite error.
  Iterate best;
  /// F of the locations and the gain as typed.
  double typedCost = 0;
  std::vector<StartSummary> starts;
  /// The start that the answer comes from.
  std::size_t chosen = 0;
  int evaluations = 0;
  /// Equalisations that failed, so that ORCA shortened its step.
  int retries = 0;

  /// The noise floor: an F as good as 0.
  double negligible = 0;
  /// F_round: what the rounding of the typed points alone brings at the answer.
  double roundingCost = 0;

  /// The independent starts that converged, and those of them that ended at the answer.
  int witnesses = 0;
  int agreeing = 0;
  /// The expected share of independent starts that would end at optima not seen yet.
  double unseenShare = 1;
  /// All of them, the lowest first.
  std::vector<Optimum> optima;

  /// Pole pairs that ended on the sigma axis, split into sigma-axis poles.
  std::optional<OtherStructure> splitPairs;
  /// Omega-axis zeros that have met and did not part, with a zero pair or quad in their place.
  bool hasMetZeros = false;
  std::optional<OtherStructure> joinedZeros;

  bool IsExact() const { return best.Cost() <= negligible; }
};

/// Solves a problem: the typed start, the data start, then standard, perturbed and random ones in
/// turn until a start has reached the noise floor, until few starts can be expected to end
/// elsewhere, or until the evaluations run out. Equal problems give equal summaries.
Summary Solve(const Problem& problem, Listener& listener,
              const std::function<bool()>& isStopRequested);

}  // namespace polefit

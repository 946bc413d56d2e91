#pragma once

#include <optional>
#include <string>
#include <vector>

#include "record/finding.h"
#include "solver/report/figures.h"

namespace polefit {

/// How a run ended; the exit code of the program.
enum class Exit {
  converged = 0,
  stopped = 1,
  faultyAnswers = 2,
  unreadable = 3,
  unwritable = 4,
  noFiniteError = 5,
  usage = 6,
  locked = 7
};

/// What a run came to.
struct RunOutcome {
  Exit exit = Exit::converged;
  /// The words behind "Result:" in the report, or why there is none.
  std::string result;
  std::vector<Finding> findings;
  double seconds = 0;
  /// Only where there is an answer.
  std::optional<Figures> figures;
  /// It was asked to stop, by whomever, before it came to an end of its own.
  bool wasAsked = false;
};

/// The last two lines of a run's output, each ended: one for people, and one for programs with
/// "name=value" pairs. Of the latter `exit` is always there; what is unknown is left out.
std::string ClosingLines(const RunOutcome& outcome);

}  // namespace polefit

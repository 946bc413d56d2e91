#pragma once

#include <optional>
#include <string>

#include "platform/processes.h"
#include "runs/machine_line.h"

namespace polefit {

/// `stopped`: by the user or at a limit, with or without a best point.
enum class Outcome { good, poor, stopped, failed };

/// "Good", "Poor", "Stopped", "Failed".
const char* WordOf(Outcome outcome);

struct Verdict {
  Outcome outcome = Outcome::failed;
  /// One sentence for the user that begins with the outcome: "Good, 2 warnings: rms 0.06 %, ...".
  std::string text;
  /// How the search ended, in the solver's words: "converged (5 of 7 independent starts agree)".
  std::string ending = {};
};

/// What is known of a run that has ended.
struct EndOfRun {
  /// How the process ended, where that was kept.
  std::optional<ProcessEnding> ending = {};
  std::optional<MachineLine> figures = {};
  /// The solver's closing words for people, without its name before them, and the line before.
  std::string closing = {};
  std::string lineBefore = {};
  /// Which results were written since the run was started.
  bool hasReport = false;
  bool hasValues = false;
  /// How often it was asked to stop.
  int stops = 0;
};

/// Judges a run by its exit status, else by the machine line, else by what it has written; a fit
/// by the machine line's figures. The closing words are shown, never understood.
Verdict VerdictOn(const EndOfRun& end);

}  // namespace polefit

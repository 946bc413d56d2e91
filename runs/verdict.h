#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/processes.h"

namespace polefit {

/// The solver's last line of output, made for programs: "pfit-end: exit=0 F=1.5e-04 evals=681 ...".
/// Figures by their names; those that the solver does not know are not there.
using MachineLine = std::map<std::string, double, std::less<>>;

/// The figures of such a line; nothing when the line is none or is not whole.
std::optional<MachineLine> ReadMachineLine(std::string_view line);

enum class Outcome { converged, limitReached, stopped, failed, noReport };

struct Verdict {
  Outcome outcome = Outcome::noReport;
  /// One sentence for the user.
  std::string text;
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

/// Judges a run by its exit status, else by the machine line, else by what it has written. The
/// closing words are shown, never understood.
Verdict VerdictOn(const EndOfRun& end);

}  // namespace polefit

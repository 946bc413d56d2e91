#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace polefit {

/// How far a run is: evaluations used, of how many at most.
struct RunProgress {
  int evaluations = 0;
  int limit = 0;

  bool operator==(const RunProgress&) const = default;
};

/// The progress that a line of the solver's output tells ("... 120 of 2000 ..."), if any.
std::optional<RunProgress> ProgressOf(std::string_view line);

/// Whether a line of the solver's output is its last one, for programs: figures, no words.
bool IsFigures(std::string_view line);

enum class Outcome { converged, limitReached, stopped, failed, noReport };

struct Verdict {
  Outcome outcome = Outcome::noReport;
  /// One sentence for the user.
  std::string text;
};

/// What is known of a run that has ended.
struct EndOfRun {
  /// The last line of its output that is neither blank nor figures, and the one before it.
  std::string lastLine;
  std::string lineBefore;
  bool hasReport = false;
  /// Whether it was asked to stop.
  bool stopAsked = false;
  /// Whether it wrote the values that it found.
  bool hasValues = false;
};

Verdict VerdictOn(const EndOfRun& end);

}  // namespace polefit

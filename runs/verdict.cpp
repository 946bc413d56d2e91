#include "runs/verdict.h"

#include <algorithm>
#include <cmath>

#include "runs/fit_quality.h"

namespace polefit {

namespace {

/// The solver's exit codes, by what they mean for the user.
enum ExitCode { kConverged = 0, kStoppedEarly = 1, kFaultyAnswers = 2, kUnreadable = 3 };

/// A shell gives this and the signal when what it ran was ended by one.
constexpr int kShellSignal = 128;

/// The solver writes whole numbers, but a log can hold anything.
int Whole(double number) {
  return std::isnan(number) ? -1 : static_cast<int>(std::clamp(number, -1e9, 1e9));
}

std::string Counted(double count, const std::string& what) {
  const int number = Whole(count);
  return std::to_string(number) + ' ' + what + (number == 1 ? "" : "s");
}

double Figure(const EndOfRun& end, std::string_view name) {
  return end.figures ? FigureOf(*end.figures, name).value_or(0) : 0;
}

std::optional<FitQuality> Quality(const EndOfRun& end) {
  return end.figures ? QualityOf(*end.figures) : std::nullopt;
}

Verdict Converged(const EndOfRun& end) {
  const std::optional<FitQuality> quality = Quality(end);
  const Outcome outcome = quality && quality->isPoor ? Outcome::poor : Outcome::good;
  const double warnings = Figure(end, "warnings");
  return {outcome, std::string(WordOf(outcome)) +
                       (warnings > 0 ? ", " + Counted(warnings, "warning") : "") + ": " +
                       (quality ? quality->text : "as far as the solver says, with no figures") +
                       "."};
}

Verdict BrokenOff(const EndOfRun& end) {
  if (end.stops > 0) {
    return {Outcome::stopped, "Stopped: by you, before the solver could write its results."};
  }
  if (end.hasReport) {
    return {Outcome::failed, "Failed: the solver broke off, and its report may not be complete."};
  }
  return {Outcome::failed, "Failed: the solver broke off without a report."};
}

/// The solver was asked to stop, but not from a window of ours.
bool IsStoppedByOthers(const EndOfRun& end) {
  return end.stops == 0 && end.figures && end.figures->contains("asked");
}

Verdict StoppedEarly(const EndOfRun& end) {
  const std::optional<FitQuality> quality = Quality(end);
  const std::string figures = quality ? ": " + quality->text + "." : ".";
  if (IsStoppedByOthers(end)) {
    return {Outcome::stopped,
            "Stopped: by a signal from outside" +
                (end.hasValues ? "; the best values so far are kept" + figures : std::string("."))};
  }
  if (end.stops == 0) {
    return {Outcome::stopped, "Stopped: at a limit; the best point found is given" + figures};
  }
  if (end.hasValues) {
    return {Outcome::stopped, "Stopped: by you; the best values so far are kept" + figures};
  }
  return {Outcome::stopped, end.stops > 1 ? "Stopped: by you at once; nothing is written."
                                          : "Stopped: by you; no values were written."};
}

/// Faults in the answers are named in the line before the closing one, the first of them.
Verdict Failed(int exitCode, const EndOfRun& end) {
  const bool isNotRun = exitCode == kFaultyAnswers || exitCode == kUnreadable;
  const double faults = Figure(end, "faults");
  const std::string code = "the solver ended with exit code " + std::to_string(exitCode);
  Verdict verdict{Outcome::failed, "Failed: "};
  if (isNotRun && faults > 0) {
    verdict.text += Counted(faults, "fault") + " in the answers; nothing was run.";
    verdict.ending = end.lineBefore;
  } else {
    verdict.text += (end.closing.empty() ? code : end.closing) + ".";
    verdict.ending = isNotRun ? end.lineBefore : "";
  }
  return verdict;
}

Verdict FromExitCode(int exitCode, const EndOfRun& end) {
  if (exitCode != kConverged && exitCode != kStoppedEarly) return Failed(exitCode, end);
  Verdict verdict = exitCode == kConverged ? Converged(end) : StoppedEarly(end);
  verdict.ending = end.closing;
  return verdict;
}

/// Nobody knows how the process ended, nor has the solver told.
Verdict FromResults(const EndOfRun& end) {
  if (!end.hasReport || !end.hasValues || end.stops > 0) return BrokenOff(end);
  return {Outcome::stopped, "Stopped: with a report and improved values; how is not known."};
}

std::optional<int> ExitCodeOf(const EndOfRun& end) {
  if (end.ending) return end.ending->number;
  if (!end.figures || !end.figures->contains("exit")) return std::nullopt;
  return Whole(end.figures->find("exit")->second);
}

}  // namespace

const char* WordOf(Outcome outcome) {
  switch (outcome) {
    case Outcome::good:
      return "Good";
    case Outcome::poor:
      return "Poor";
    case Outcome::stopped:
      return "Stopped";
    case Outcome::failed:
      break;
  }
  return "Failed";
}

Verdict VerdictOn(const EndOfRun& end) {
  const std::optional<int> exitCode = ExitCodeOf(end);
  const bool isSignal = end.ending && (end.ending->isSignal || *exitCode > kShellSignal);
  if (isSignal) return BrokenOff(end);
  Verdict verdict = exitCode ? FromExitCode(*exitCode, end) : FromResults(end);
  const bool isStoppedByUser = verdict.outcome == Outcome::stopped && end.stops > 0;
  if (exitCode && !isStoppedByUser && !end.hasReport) {
    verdict.text += "  No report was written.";
  }
  return verdict;
}

}  // namespace polefit

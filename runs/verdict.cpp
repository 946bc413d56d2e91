#include "runs/verdict.h"

#include <charconv>
#include <sstream>

namespace polefit {

namespace {

/// The solver's exit codes, by what they mean for the user.
enum ExitCode { kConverged = 0, kStoppedEarly = 1, kFaultyAnswers = 2, kUnreadable = 3 };

/// A shell gives this and the signal when what it ran was ended by one.
constexpr int kShellSignal = 128;

std::string Capitalised(std::string text) {
  if (!text.empty() && text[0] >= 'a' && text[0] <= 'z') text[0] = static_cast<char>(text[0] - 32);
  return text;
}

Verdict BrokenOff(const EndOfRun& end) {
  if (end.stops > 0) {
    return {Outcome::stopped, "Stopped by you, before the solver could write its results."};
  }
  if (end.hasReport) {
    return {Outcome::failed, "Failed: the solver broke off, and its report may not be complete."};
  }
  return {Outcome::noReport, "Ended without a report: the solver broke off."};
}

Verdict StoppedEarly(const EndOfRun& end) {
  if (end.stops == 0) {
    const std::string why = end.closing.empty() ? "best point found is given" : end.closing;
    return {Outcome::limitReached, "Limit reached: " + why};
  }
  if (end.hasValues) {
    return {Outcome::stopped, "Stopped by you; the best values so far are kept."};
  }
  return {Outcome::stopped, end.stops > 1 ? "Stopped by you at once; nothing is written."
                                          : "Stopped by you; no values were written."};
}

/// Faults in the answers are named in the line before the closing one, the first of them.
Verdict Failed(int exitCode, const EndOfRun& end) {
  const bool isNotRun = exitCode == kFaultyAnswers || exitCode == kUnreadable;
  const bool hasFault = isNotRun && !end.closing.empty() && !end.lineBefore.empty();
  const std::string why = end.closing.empty()
                              ? "the solver ended with exit code " + std::to_string(exitCode) + "."
                              : end.closing;
  return {Outcome::failed, "Failed: " + why + (hasFault ? ".  " + end.lineBefore : "")};
}

Verdict FromExitCode(int exitCode, const EndOfRun& end) {
  if (exitCode == kConverged) {
    return {Outcome::converged, end.closing.empty() ? "Converged" : Capitalised(end.closing)};
  }
  return exitCode == kStoppedEarly ? StoppedEarly(end) : Failed(exitCode, end);
}

/// Nobody knows how the process ended, nor has the solver told.
Verdict FromResults(const EndOfRun& end) {
  if (!end.hasReport || !end.hasValues || end.stops > 0) return BrokenOff(end);
  return {Outcome::limitReached, "Ended with a report and improved values; how is not known."};
}

std::optional<int> ExitCodeOf(const EndOfRun& end) {
  if (end.ending) return end.ending->number;
  if (!end.figures || !end.figures->contains("exit")) return std::nullopt;
  return static_cast<int>(end.figures->find("exit")->second);
}

}  // namespace

std::optional<MachineLine> ReadMachineLine(std::string_view line) {
  std::istringstream words{std::string(line)};
  std::string word;
  if (!(words >> word) || word != "pfit-end:") return std::nullopt;
  MachineLine figures;
  while (words >> word) {
    const std::size_t equals = word.find('=');
    if (equals == std::string::npos) return std::nullopt;
    double figure = 0;
    const char* const last = word.data() + word.size();
    const auto [end, error] = std::from_chars(word.data() + equals + 1, last, figure);
    if (error != std::errc() || end != last) return std::nullopt;
    figures[word.substr(0, equals)] = figure;
  }
  return figures.contains("exit") ? std::optional(figures) : std::nullopt;
}

Verdict VerdictOn(const EndOfRun& end) {
  const std::optional<int> exitCode = ExitCodeOf(end);
  const bool isSignal = end.ending && (end.ending->isSignal || *exitCode > kShellSignal);
  if (isSignal) return BrokenOff(end);
  Verdict verdict = exitCode ? FromExitCode(*exitCode, end) : FromResults(end);
  const bool isTold = verdict.outcome == Outcome::converged ||
                      verdict.outcome == Outcome::limitReached ||
                      verdict.outcome == Outcome::failed;
  if (isTold && !end.hasReport) verdict.text += "  No report was written.";
  return verdict;
}

}  // namespace polefit

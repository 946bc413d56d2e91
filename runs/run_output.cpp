#include "runs/run_output.h"

#include <charconv>

namespace polefit {

namespace {

constexpr std::string_view kClosing = "pfit: ";

std::string_view WordBefore(std::string_view text) {
  return text.substr(text.rfind(' ') + 1);  // npos + 1 is 0: the text is one word
}

std::optional<int> WholeNumber(std::string_view word) {
  int number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  const bool whole = error == std::errc() && end == word.data() + word.size();
  return whole ? std::optional(number) : std::nullopt;
}

/// A run that ended without the solver's own closing words.
Verdict WithoutClosing(const EndOfRun& end) {
  if (end.stopAsked) {
    return {Outcome::stopped, "Stopped by you, before the solver could write its results."};
  }
  if (end.hasReport) {
    return {Outcome::failed, "Failed: the solver broke off, and its report may not be complete."};
  }
  return {Outcome::noReport, "Ended without a report: the solver broke off."};
}

/// Faults in the answers are named in the line before the closing one, the first of them.
std::string FailureText(const std::string& reason, const std::string& lineBefore) {
  const bool notRun = reason.starts_with("NOT RUN") && !lineBefore.empty();
  return "Failed: " + reason + (notRun ? ".  " + lineBefore : "");
}

Verdict FromClosing(const std::string& reason, const EndOfRun& end) {
  if (reason.starts_with("converged")) {
    return {Outcome::converged, "Converged" + reason.substr(std::string_view("converged").size())};
  }
  if (reason.starts_with("stopped on request")) {
    return {Outcome::stopped, end.hasValues ? "Stopped by you; the best values so far are kept."
                                            : "Stopped by you; no values were written."};
  }
  if (reason.starts_with("ended at once on request")) {
    return {Outcome::stopped, "Stopped by you at once; nothing is written."};
  }
  if (reason.starts_with("stopped at ")) return {Outcome::limitReached, "Limit reached: " + reason};
  return {Outcome::failed, FailureText(reason, end.lineBefore)};
}

}  // namespace

std::optional<RunProgress> ProgressOf(std::string_view line) {
  constexpr std::string_view kOf = " of ";
  for (std::size_t at = line.find(kOf); at != std::string_view::npos; at = line.find(kOf, at + 1)) {
    const std::string_view rest = line.substr(at + kOf.size());
    const auto used = WholeNumber(WordBefore(line.substr(0, at)));
    const auto limit = WholeNumber(rest.substr(0, rest.find_first_of(" ,;")));
    if (used && limit && *limit > 0) return RunProgress{*used, *limit};
  }
  return std::nullopt;
}

bool IsFigures(std::string_view line) {
  return line.starts_with("pfit-end: ");
}

Verdict VerdictOn(const EndOfRun& end) {
  if (!end.lastLine.starts_with(kClosing)) return WithoutClosing(end);
  Verdict verdict = FromClosing(end.lastLine.substr(kClosing.size()), end);
  if (!end.hasReport) verdict.text += "  No report was written.";
  return verdict;
}

}  // namespace polefit

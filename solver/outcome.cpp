#include "solver/outcome.h"

#include <algorithm>

#include "base/text_format.h"

namespace polefit {

namespace {

std::string ForPeople(const RunOutcome& outcome) {
  std::string line = "pfit: " + outcome.result;
  if (!outcome.figures) return line;
  return line + Format("; rms error %.3e, %d evaluations", outcome.figures->rms,
                       outcome.figures->evaluations);
}

/// What a front end judges the fit by.
std::string Quality(const Figures& figures) {
  const Extreme& error = figures.passband.telling;
  const Extreme& decibels = figures.passband.tellingDecibels;
  std::string line = Format(" poles=%d zeros=%d ipower=%.9g worst=%.3e worstat=%.9g", figures.poles,
                            figures.zeros, figures.inputPower, error.size, error.frequency);
  if (decibels.row > 0) {
    line += Format(" worstdb=%.4g worstdbat=%.9g worstdbrow=%d", decibels.size, decibels.frequency,
                   decibels.row);
  }
  if (figures.delay) line += Format(" ripple=%.4g", figures.delay->peakToPeak);
  return line;
}

std::string ForPrograms(const RunOutcome& outcome) {
  std::string line = Format("pfit-end: exit=%d", static_cast<int>(outcome.exit));
  if (outcome.figures) {
    const Figures& figures = *outcome.figures;
    const Extreme& error = figures.passband.largestWeighted;
    const Extreme& decibels = figures.passband.largestDecibels;
    line += Format(" F=%.6e rms=%.3e max=%.3e maxat=%.9g maxrow=%d maxdb=%.4g dbat=%.9g dbrow=%d",
                   figures.cost, figures.rms, error.size, error.frequency, error.row, decibels.size,
                   decibels.frequency, decibels.row);
    line += Format(" agree=%d starts=%d evals=%d", figures.agreeing, figures.starts,
                   figures.evaluations);
  }
  const auto faults = std::count_if(outcome.findings.begin(), outcome.findings.end(),
                                    [](const Finding& finding) { return finding.IsFault(); });
  line += Format(" warnings=%d faults=%d",
                 static_cast<int>(outcome.findings.size()) - static_cast<int>(faults),
                 static_cast<int>(faults));
  if (outcome.figures)
    line += Format(" bounds=%d", outcome.figures->bounds) + Quality(*outcome.figures);
  if (outcome.wasAsked) line += " asked=1";
  return line;
}

}  // namespace

std::string ClosingLines(const RunOutcome& outcome) {
  return ForPeople(outcome) + "\n" + ForPrograms(outcome) + "\n";
}

}  // namespace polefit

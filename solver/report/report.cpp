#include "solver/report/report.h"

#include <algorithm>
#include <cmath>

#include "base/text_format.h"
#include "solver/report/report_fit.h"
#include "solver/report/report_graphs.h"
#include "solver/report/report_locations.h"
#include "solver/report/report_problem.h"

namespace polefit {

namespace {

void WriteHead(const ReportHead& head, ReportText& text) {
  text.Line("POLEFIT " POLEFIT_VERSION " - report of the solver pfit: the poles and zeros of H(s)");
  text.Line(std::string(ReportText::kColumns, '='));
  text.Wrapped("Data file : " + head.dataFile, 12);
  text.Wrapped("Folder    : " + head.dataFolder, 12);
  text.Line("Made      : " + head.date + Format(", in %.3f seconds", head.seconds));
  text.Line();
  text.Wrapped("Result: " + head.result, 8);
}

/// What the starts that led elsewhere, or did not, say about the answer.
void WriteAgreement(const Summary& summary, ReportText& text) {
  constexpr std::size_t kIndent = 8;
  const std::string indent(kIndent, ' ');
  if (!IsConverged(summary.ending)) return;
  if (summary.IsExact()) {
    text.Line(indent + "The fit is exact.");
  } else if (summary.witnesses < 2) {
    text.Wrapped(indent +
                     "Too few independent starts converged to tell more: try other starting "
                     "values, or a larger EVALMAX.",
                 kIndent);
  } else {
    text.Wrapped(indent + Format("Starts agree that end within 0.1 %% of the answer's F; about "
                                 "%.0f %% of such starts may end elsewhere.",
                                 std::ceil(100 * summary.unseenShare)),
                 kIndent);
  }
}

/// How F comes about with delay, so that question 4 can be chosen.
void WriteBalance(const Problem& problem, const Fit& fit, ReportText& text) {
  text.Wrapped("    = W * magnitude + delay  " + Fitted(problem.rows.magnitudeWeight, 6, 12) +
                   Format(" * %.4e + %.4e   (W: question 4)", fit.meanSquare, fit.delayMeanSquare),
               29);
}

void WriteDelayQuality(const SolvedProblem& solved, ReportText& text) {
  const DelayFigures& delay = *solved.figures.delay;
  text.Line("  total delay, constant      " + Rounded(delay.constant, 5) + " ns   (" +
            ConstantNote(solved.problem) + ")");
  text.Line("  ripple around it           " + Rounded(delay.peakToPeak, 4) + " ns peak to peak, " +
            Rounded(delay.rms, 4) + " ns rms");
}

double HighestQuality(const std::vector<LocationFigures>& locations) {
  double highest = 0;
  for (const LocationFigures& location : locations) {
    const bool isPoles = location.kind == FactorKind::polePair;
    if (isPoles && location.IsPair()) highest = std::max(highest, location.Quality());
  }
  return highest;
}

/// What the answer is, and what to look at before it is built.
void WriteResultSize(const SolvedProblem& solved, ReportText& text) {
  const Problem& problem = solved.problem;
  const Figures& figures = solved.figures;
  const double quality = HighestQuality(figures.locations);
  const auto warnings = static_cast<int>(WarningTexts(solved.findings).size());
  text.Line(Format("  H(s)                       %d poles, %d zeros", problem.PoleCount(),
                   problem.ZeroCount()) +
            (quality > 0 ? ", highest Q " + Rounded(quality, 4) : std::string()));
  const auto highest = std::max_element(
      figures.sidelobes.begin(), figures.sidelobes.end(),
      [](const Sidelobe& one, const Sidelobe& other) { return one.decibels < other.decibels; });
  if (highest != figures.sidelobes.end() && std::isfinite(highest->decibels)) {
    text.Line(Format("  highest sidelobe           %.2f dB against H(0)", highest->decibels));
  }
  text.Line(Format("  degrees of freedom         %d   (rows with weight less fitted numbers)",
                   figures.freedom));
  if (figures.errors != ErrorPattern::unknown) {
    text.Line(figures.errors == ErrorPattern::random
                  ? "  the errors look random"
                  : "  the errors look systematic: more poles may help");
  }
  text.Line(Format("  bounds, warnings           %d on a bound or held, %d warning", figures.bounds,
                   warnings) +
            (warnings == 1 ? "" : "s"));
}

/// The first screen: is it good, and can it be trusted?
void WriteQuality(const SolvedProblem& solved, ReportText& text) {
  const Problem& problem = solved.problem;
  const Fit& fit = solved.summary.best.fit;
  const char* const unit = problem.inputPower != 0 || problem.usesWeights
                               ? "   (parts of the largest Yout, weighted)"
                               : "   (parts of the largest Yout)";
  WriteAgreement(solved.summary, text);
  text.Line();
  text.Line(Format("  rms error of the passband  %.3e", std::sqrt(fit.meanSquare)) + unit);
  text.Line(Format("  largest passband error     %.3e", fit.largestError) + unit);
  const Extreme& decibels = solved.figures.passband.largestDecibels;
  if (decibels.row > 0) {
    text.Line("      in dB                  " + Rounded(decibels.size, 4) + " dB at " +
              Fitted(decibels.frequency, 9, 15) + Format(" MHz, row %d", decibels.row));
  }
  text.Line(Format("  gain H(0)                  %.9g", fit.gain));
  if (solved.figures.delay) WriteDelayQuality(solved, text);
  text.Line(Format("  cost F                     %.6e   (typed values: %.6e)", fit.cost,
                   solved.summary.typedCost));
  if (problem.wantsDelay) WriteBalance(problem, fit, text);
  WriteResultSize(solved, text);
  text.Line(Format("  model evaluations          %d of %d at most", solved.summary.evaluations,
                   problem.options.maxEvaluations));
}

void WriteWarnings(const std::vector<Finding>& findings, ReportText& text) {
  for (const std::string& warning : WarningTexts(findings)) text.Wrapped(warning, 9);
}

void WriteNotes(const SolvedProblem& solved, ReportText& text) {
  text.Line();
  for (const std::string* const note : {&solved.record.Note1, &solved.record.Note2}) {
    if (!note->empty()) text.Wrapped("Note: " + *note, 6);
  }
  WriteWarnings(solved.findings, text);
}

}  // namespace

std::string ResultText(const Summary& summary) {
  switch (summary.ending) {
    case EndReason::evalMax:
      return "stopped at EVALMAX; best point found is given";
    case EndReason::stepsLim:
      return "stopped at STEPSLIM; best point found is given";
    case EndReason::requested:
      return "stopped on request; best point found is given";
    case EndReason::finerThanTyped:
      return "converged: the fit is finer than the points are typed";
    case EndReason::tinyError:
      return "converged: the error is below 1e-7 of the largest Yout";
    default:
      return Format("converged (%d of %d independent starts agree)", summary.agreeing,
                    summary.witnesses);
  }
}

std::vector<std::string> FullReport(const ReportHead& head, const SolvedProblem& solved) {
  ReportText text;
  WriteHead(head, text);
  WriteQuality(solved, text);
  WriteNotes(solved, text);
  ReportProblem(solved, text);
  ReportIterations(solved, text);
  ReportLocations(solved, text);
  ReportBounds(solved, text);
  ReportPassband(solved, text);
  if (solved.problem.wantsDelay) ReportDelay(solved, text);
  ReportSidelobes(solved, text);
  ReportGraphs(solved, text);
  text.Line();
  text.Line("End of report.");
  return text.Lines();
}

std::vector<std::string> FailureReport(const ReportHead& head,
                                       const std::vector<Finding>& findings) {
  constexpr std::size_t kMost = 20;
  const std::vector<std::string> faults = FaultTexts(findings);
  ReportText text;
  WriteHead(head, text);
  text.Line();
  for (std::size_t i = 0; i < std::min(kMost, faults.size()); ++i) text.Wrapped(faults[i], 2);
  if (faults.size() > kMost) text.Line(Format("... and %zu more.", faults.size() - kMost));
  WriteWarnings(findings, text);
  text.Line();
  text.Line("End of report.");
  return text.Lines();
}

}  // namespace polefit

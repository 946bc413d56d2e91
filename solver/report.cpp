#include "solver/report.h"

#include <algorithm>
#include <cmath>

#include "solver/model.h"
#include "solver/text_format.h"

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

/// The first screen: is it good, and can it be trusted?
void WriteQuality(const SolvedProblem& solved, ReportText& text) {
  const Problem& problem = solved.problem;
  const Fit& fit = solved.summary.best.fit;
  text.Line("        Starts agree that end within 0.1 % of the lowest F.");
  text.Line();
  text.Line(Format("  rms error of the passband  %.3e   (part of the largest Yout%s)",
                   std::sqrt(fit.meanSquare),
                   problem.inputPower != 0 || problem.usesWeights ? ", weighted" : ""));
  text.Line(Format("  largest error              %.3e", fit.largestError));
  text.Line("  gain H(0)                  " + PlainNumber(fit.gain));
  if (problem.wantsDelay) {
    const DelayQuality delay = JudgeDelay(problem, solved.summary.best);
    text.Line(Format("  total delay, constant      %.2f ns   (%s)", fit.delayConstant,
                     problem.rows.wantedDelay > 0 ? "Tmin, as wanted" : "free"));
    text.Line(Format("  ripple around it           %.3f ns peak to peak, %.3f ns rms",
                     delay.peakToPeak, delay.rms));
  }
  text.Line(Format("  cost F                     %.6e   (typed values: %.6e)", fit.cost,
                   solved.summary.typedCost));
  text.Line(Format("  model evaluations          %d of %d at most", solved.summary.evaluations,
                   problem.options.maxEvaluations));
}

void WriteNotes(const SolvedProblem& solved, ReportText& text) {
  text.Line();
  for (const std::string* const note : {&solved.record.Note1, &solved.record.Note2}) {
    if (!note->empty()) text.Wrapped("Note: " + *note, 6);
  }
  for (const std::string& warning : solved.warnings) text.Wrapped(warning, 9);
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
    default:
      return Format("converged (%d of %zu starts agree)", summary.StartsNear(summary.best.Cost()),
                    summary.starts.size());
  }
}

DelayQuality JudgeDelay(const Problem& problem, const Point& point) {
  DelayQuality quality;
  const Eigen::ArrayXd delays =
      problem.DelayUnit() *
      Delays(problem.constellation, point.parameters, problem.rows.delayFrequencies);
  double sum = 0;
  for (std::size_t i = 0; i < problem.delay.size(); ++i) {
    quality.total.push_back(problem.delay[i].tx + delays[static_cast<Eigen::Index>(i)]);
    const double error = quality.total.back() - point.fit.delayConstant;
    sum += error * error;
    quality.largest = std::max(quality.largest, std::abs(error));
  }
  const auto [least, most] = std::minmax_element(quality.total.begin(), quality.total.end());
  quality.peakToPeak = *most - *least;
  quality.rms = std::sqrt(sum / static_cast<double>(quality.total.size()));
  return quality;
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
                                       const std::vector<std::string>& messages) {
  constexpr std::size_t kMost = 20;
  ReportText text;
  WriteHead(head, text);
  text.Line();
  for (std::size_t i = 0; i < std::min(kMost, messages.size()); ++i) text.Wrapped(messages[i], 2);
  if (messages.size() > kMost) text.Line(Format("... and %zu more.", messages.size() - kMost));
  text.Line();
  text.Line("End of report.");
  return text.Lines();
}

}  // namespace polefit

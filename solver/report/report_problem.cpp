#include "solver/report/report_problem.h"

#include <algorithm>

#include "base/text.h"
#include "base/text_format.h"
#include "record/question_catalogue.h"

namespace polefit {

namespace {

/// A caption on one line, in ASCII.
std::string PlainCaption(std::string_view caption) {
  std::string plain = OneLineCaption(caption);
  // Many text programs of today would show an odd sign for a single byte beyond ASCII.
  constexpr std::string_view kMark = "» ";
  const std::size_t mark = plain.find(kMark);
  return mark == std::string::npos ? plain : plain.erase(mark, kMark.size());
}

/// Whether the other answers give this one a meaning.
bool IsInUse(const SolvedProblem& solved, int slot) {
  const ResponseRecord& record = solved.record;
  const auto counts = [&record](int countSlot) {
    std::vector<std::string> words = Words(record.Slot(countSlot));
    words.resize(3);
    return words;
  };
  const auto isZero = [](const std::string& word) { return ParseNumber(word).value_or(0) == 0; };
  switch (slot) {
    case slot::kTmin:
    case slot::kDelRipplePower:
    case slot::kMagnVSripple:
      return solved.problem.wantsDelay;
    case slot::kSigmaPoles:
      return !isZero(counts(slot::kNPoles)[0]);
    case slot::kPoleReal:
    case slot::kPoleImag:
      return !isZero(counts(slot::kNPoles)[1]);
    case slot::kSigmaZero:
    case slot::kDoublet:
    case slot::kLossless:
      return IsYes(record.Slot(slot::kSigmaZeroWanted));
    case slot::kYzero:
      return !isZero(counts(slot::kZeroCounts)[0]);
    case slot::kZreal:
    case slot::kZimag:
      return !isZero(counts(slot::kZeroCounts)[1]) || !isZero(counts(slot::kZeroCounts)[2]);
    default:
      return true;
  }
}

/// The locations, part 0 (real) or 1, of some kinds that start from the points.
std::string FromPoints(const Problem& problem, const std::vector<FactorKind>& kinds, int part) {
  std::string values;
  for (std::size_t i = 0; i < problem.constellation.factors.size(); ++i) {
    const Factor& factor = problem.constellation.factors[i];
    if (std::find(kinds.begin(), kinds.end(), factor.kind) == kinds.end()) continue;
    values += Format(" %.5g", problem.typedParameters[factor.parameter + part]);
  }
  return "(from the points)" + values;
}

/// What an answer in use that is empty was filled with.
std::string FilledAnswer(const Problem& problem, int slot) {
  const std::vector<FactorKind> paired = {FactorKind::zeroPair, FactorKind::zeroQuad};
  switch (slot) {
    case slot::kSigmaPoles:
      return FromPoints(problem, {FactorKind::sigmaPole}, 0);
    case slot::kPoleReal:
      return FromPoints(problem, {FactorKind::polePair}, 0);
    case slot::kPoleImag:
      return FromPoints(problem, {FactorKind::polePair}, 1);
    case slot::kSigmaZero:
      return FromPoints(problem, {FactorKind::sigmaZero}, 0);
    case slot::kYzero:
      return FromPoints(problem, {FactorKind::omegaZero}, 0);
    case slot::kZreal:
      return FromPoints(problem, paired, 0);
    case slot::kZimag:
      return FromPoints(problem, paired, 1);
    case slot::kGain:
      return "(from the points) 1";
    default:
      return "";
  }
}

std::string AnswerText(const SolvedProblem& solved, int slot) {
  if (!IsInUse(solved, slot)) return "(not in use)";
  const std::string& answer = solved.record.Slot(slot);
  return Words(answer).empty() ? FilledAnswer(solved.problem, slot) : answer;
}

void WriteAnswers(const SolvedProblem& solved, ReportText& text) {
  constexpr std::size_t kCaptionWidth = 52;
  for (const Question& question : kQuestions) {
    const std::string caption = PlainCaption(question.label);
    const std::string begin =
        Padded(FirstCharacters(caption, kCaptionWidth), kCaptionWidth) + " : ";
    text.Wrapped(begin + AnswerText(solved, question.slot), kCaptionWidth + 3);
  }
}

void WriteSettings(const SolvedProblem& solved, ReportText& text) {
  for (std::size_t i = 0; i < kSolverQuestions.size(); ++i) {
    const std::string& value = solved.record.solver[i];
    const bool isDefault = Words(value).empty();
    text.Wrapped(
        "  " + Padded(UpperCase(kSolverQuestions[i].name), 9) + " " +
            (isDefault ? std::string(kSolverQuestions[i].defaultLabel) + "  (default)" : value),
        12);
  }
}

/// Who moves the omega-axis zeros.
void WriteOmegaZeros(const Constellation& constellation, ReportText& text) {
  const auto all =
      std::count_if(constellation.factors.begin(), constellation.factors.end(),
                    [](const Factor& factor) { return factor.kind == FactorKind::omegaZero; });
  if (all == 0) return;
  const auto fitted = all - constellation.lynxCount - constellation.heldCount;
  std::string parts;
  const auto add = [&parts](long count, const char* how) {
    if (count > 0) parts += (parts.empty() ? ": " : ", ") + std::to_string(count) + how;
  };
  add(constellation.heldCount, " held at 1");
  add(fitted, " fitted to the points");
  add(constellation.lynxCount, " placed so that all sidelobes are equal");
  text.Wrapped(Format("  %d omega-axis zero", static_cast<int>(all)) + (all > 1 ? "s" : "") + parts,
               4);
}

void WriteProblemSize(const SolvedProblem& solved, ReportText& text) {
  const Problem& problem = solved.problem;
  const int delayPoints = solved.record.nDelayPoints;
  text.Line(Format("  %zu passband points, %d delay points", problem.passband.size(), delayPoints) +
            (problem.wantsDelay || delayPoints == 0 ? "" : " (not in use: question 1 is N)"));
  text.Line(Format("  H(s) has %d poles and %d zeros; %d numbers are fitted", problem.PoleCount(),
                   problem.ZeroCount(), problem.constellation.orcaCount));
  WriteOmegaZeros(problem.constellation, text);
}

/// One line for a start; all its lines for those that are told in full.
void WriteStart(const SolvedProblem& solved, std::size_t index, bool isTold, ReportText& text) {
  const StartSummary& start = solved.summary.starts[index];
  const std::string cost =
      start.best.isFinite ? Format("F %.6e", start.best.Cost()) : std::string("no finite error");
  text.Line(Format("Start %zu (%s): %s, %d evaluations%s", index + 1, NameOf(start.kind),
                   cost.c_str(), start.evaluations, start.HasEnded() ? "" : ", cut short"));
  const int number = static_cast<int>(index) + 1;
  for (const Journal::Line& line : solved.journal.Lines()) {
    if (line.start != number) continue;
    if (line.kind == Journal::Kind::detail || isTold) text.Wrapped(line.text, 8);
  }
}

/// Where starts ended that did not reach the answer: converged ones, or those that were cut short.
/// The lowest ones.
std::string OtherOptima(const Summary& summary, bool isConverged) {
  constexpr double kElsewhere = 1.01;
  constexpr int kMost = 10;
  std::string costs;
  int count = 0;
  for (const Optimum& optimum : summary.optima) {
    const bool isOther =
        optimum.cost > kElsewhere * summary.best.Cost() && optimum.cost > summary.negligible;
    if (!isOther || optimum.isConverged != isConverged) continue;
    if (++count <= kMost) costs += Format(" %.4e", optimum.cost);
  }
  if (count > kMost) costs += Format(" and %d more", count - kMost);
  return costs;
}

/// Names a start that ended lower than the answer, by too little to be taken for it.
void WriteLowerStart(const Summary& summary, ReportText& text) {
  const auto lowest = std::min_element(summary.starts.begin(), summary.starts.end(),
                                       [](const StartSummary& one, const StartSummary& other) {
                                         return one.best.Cost() < other.best.Cost();
                                       });
  if (!(lowest->best.Cost() < summary.best.Cost())) return;
  text.Wrapped(Format("Start %td ended lower, at F %.9e, by too little to be taken.",
                      lowest - summary.starts.begin() + 1, lowest->best.Cost()),
               2);
}

/// How the lines of the section are read.
void WriteKey(const Options& options, ReportText& text) {
  text.Wrapped(
      "A barrier problem a line: RHO weighs the barrier that keeps locations off their "
      "bounds, F is the cost at the end, \"at evaluation\" counts those of the whole run. "
      "What ended it: ZERO, it had converged; RHO, the barrier outweighs F and a smaller one "
      "pays better; STEPSLIM, no steps were left. The polish does without a barrier.",
      0);
  if (options.stepOut > 0) {
    text.Line("STEPOUT: step (at evaluation), ..., r the trust region's radius, scaled.");
  }
}

}  // namespace

void ReportProblem(const SolvedProblem& solved, ReportText& text) {
  text.Heading("THE PROBLEM AS READ");
  WriteAnswers(solved, text);
  text.Line();
  WriteProblemSize(solved, text);
  text.Line();
  text.Line("Solver settings");
  WriteSettings(solved, text);
}

void ReportIterations(const SolvedProblem& solved, ReportText& text) {
  const Summary& summary = solved.summary;
  text.Heading("ITERATIONS");
  WriteKey(solved.problem.options, text);
  for (std::size_t i = 0; i < summary.starts.size(); ++i) {
    WriteStart(solved, i, i == 0 || i == summary.chosen, text);
  }
  text.Line();
  const double cost = summary.best.Cost();
  const bool isExact = cost <= std::max(summary.negligible, summary.roundingCost);
  text.Wrapped(Format("F of the typed values %.6e, of the answer %.6e, ", summary.typedCost, cost) +
                   (isExact ? "which is exact to the digits typed"
                            : Format("ratio %.4g", summary.typedCost / cost)),
               2);
  text.Line(Format("The answer is that of start %zu.", summary.chosen + 1));
  WriteLowerStart(summary, text);
  if (summary.retries > 0) {
    text.Wrapped(Format("LYNX retries: %d steps were shortened because the sidelobes could not be "
                        "equalised",
                        summary.retries),
                 2);
  }
  const std::string others = OtherOptima(summary, true);
  if (!others.empty()) text.Wrapped("Other local optima seen, F:" + others, 2);
  const std::string unfinished = OtherOptima(summary, false);
  if (!unfinished.empty()) text.Wrapped("Unfinished, F:" + unfinished, 2);
}

}  // namespace polefit

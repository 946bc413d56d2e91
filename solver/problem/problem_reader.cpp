#include "solver/problem/problem_reader.h"

#include <cmath>
#include <numbers>

#include "solver/problem/location_reader.h"
#include "solver/problem/option_reader.h"
#include "solver/problem/point_reader.h"

namespace polefit {

namespace {

/// Reads a number that must be above 0, or may be 0 too.
double Positive(AnswerReader& answers, const ResponseRecord& record, int slot,
                bool mayBe0 = false) {
  const std::optional<double> value = answers.Number(record, slot);
  if (!value) return 1;
  if (*value > 0 || (mayBe0 && *value == 0)) return *value;
  answers.Fault(
      QuestionTopic(slot),
      ": " + record.Slot(slot) + (mayBe0 ? " must be 0 or greater." : " must be greater than 0."));
  return 1;
}

void ReadFitAnswers(const ResponseRecord& record, AnswerReader& answers, Problem& problem) {
  problem.wantsDelay = IsYes(record.Slot(slot::kEqualDelay));
  problem.usesWeights = IsYes(record.Slot(slot::kUseWeights));
  if (problem.wantsDelay) {
    problem.rows.wantedDelay = Positive(answers, record, slot::kTmin, true);
    problem.delayRipplePower = answers.Number(record, slot::kDelRipplePower).value_or(0);
    problem.rows.magnitudeWeight = Positive(answers, record, slot::kMagnVSripple);
  }
  problem.inputPower = answers.Number(record, slot::kIPower).value_or(0);
  problem.freqNorm = Positive(answers, record, slot::kFreqNorm);
}

void ReadGain(const ResponseRecord& record, AnswerReader& answers, Problem& problem) {
  const std::string& text = record.Slot(slot::kGain);
  if (Words(text).empty()) return;
  const std::optional<double> gain = answers.Number(record, slot::kGain);
  if (!gain) return;
  if (*gain == 0) answers.Fault(QuestionTopic(slot::kGain), ": " + text + " must be other than 0.");
  if (*gain < 0)
    answers.Warn(ShortQuestionTopic(slot::kGain), ": " + text + " is taken as its magnitude.");
  problem.typedGain = std::abs(*gain);
}

/// The gain and the delay constant are unknowns too, but the best ones for any locations.
void WarnOfFewRows(AnswerReader& answers, const Problem& problem) {
  const auto rows = static_cast<int>(problem.passband.size() + problem.delay.size());
  const int unknowns = problem.constellation.orcaCount;
  if (unknowns <= rows) return;
  answers.Warn({}, std::to_string(unknowns) + " unknowns but only " + std::to_string(rows) +
                       (rows == 1 ? " point" : " points") + "; the answer is not unique.");
}

}  // namespace

double Problem::DelayUnit() const {
  return 1000 / (2 * std::numbers::pi * freqNorm);
}

Problem ReadProblem(const ResponseRecord& record, std::vector<Finding>& findings) {
  AnswerReader answers(findings);
  Problem problem;
  ReadFitAnswers(record, answers, problem);
  ReadPoints(record, answers, problem);  // before the locations: they ask for rows beyond the band
  ReadLocations(record, answers, problem);
  ReadGain(record, answers, problem);
  if (record.solverCount > 0) ReadOptions(record, answers, problem.options);
  SortByQuestion(findings);
  if (!HasFault(findings)) WarnOfFewRows(answers, problem);
  return problem;
}

Problem ReadConstellation(const ResponseRecord& record, std::vector<Finding>& findings) {
  AnswerReader answers(findings);
  Problem problem;
  problem.freqNorm = Positive(answers, record, slot::kFreqNorm);
  ReadLocations(record, answers, problem);
  ReadGain(record, answers, problem);
  return problem;
}

}  // namespace polefit

#include "check/typing_slips.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "record/question_catalogue.h"
#include "solver/problem/answers.h"

namespace polefit {

namespace {

/// Data rarely reach so far beyond the band, or end so far below its upper limit.
constexpr double kFarAbove = 5;
constexpr double kFarBelow = 0.1;

/// The numbers of a column; empty when one of them is none, which is a fault of its own.
template <std::size_t Columns>
std::vector<double> NumbersOf(const PointLists<Columns>& points, int count, int column) {
  std::vector<double> numbers;
  for (int row = 1; row <= count; ++row) {
    const auto number = ParseNumber(points.At(row, column));
    if (!number) return {};
    numbers.push_back(*number);
  }
  return numbers;
}

/// A file holds a value up to its first "!", without tabs, and reads "-999..." as empty.
void FindLostText(const ResponseRecord& record, std::vector<Finding>& findings) {
  for (const Question& question : kQuestions) {
    const std::string& answer = record.Slot(question.slot);
    const bool isCut = answer.find_first_of("!\t") != std::string::npos;
    if (!isCut && !answer.starts_with("-999")) continue;
    const Topic topic = ShortQuestionTopic(question.slot);
    findings.push_back({topic.place, Severity::warning,
                        topic.name + ": the file will not give \"" + answer + "\" back" +
                            (isCut ? ": a value ends at a \"!\", and tabs fall out."
                                   : ": what begins with -999 is read as empty.")});
  }
}

template <std::size_t Columns>
void FindOtherUnit(FindingTable table, const PointLists<Columns>& points, int count,
                   double freqNorm, std::vector<Finding>& findings) {
  const std::vector<double> frequencies = NumbersOf(points, count, 1);
  if (frequencies.empty()) return;
  const double highest = *std::max_element(frequencies.begin(), frequencies.end());
  const double lowest = *std::min_element(frequencies.begin(), frequencies.end());
  const bool isAbove = lowest > kFarAbove * freqNorm;
  if (!isAbove && (highest <= 0 || highest >= kFarBelow * freqNorm)) return;
  const Topic topic = PointTopic(table, isAbove ? 1 : count, 1);
  findings.push_back(
      {topic.place, Severity::warning,
       topic.name +
           (isAbove ? ": all frequencies lie above 5 times Freq Norm. Are they in Hz or kHz?"
                    : ": all frequencies lie below a tenth of Freq Norm. Are they in GHz?") +
           " Both are taken in MHz."});
}

void FindDecibels(const ResponseRecord& record, std::vector<Finding>& findings) {
  static constexpr const char* kNames[] = {"Yin", "Yout"};
  for (const int column : {2, 3}) {
    const std::vector<double> values = NumbersOf(record.passband, record.nFreqPoints, column);
    const auto isNegative = [](double value) { return value < 0; };
    if (values.empty() || !std::all_of(values.begin(), values.end(), isNegative)) continue;
    findings.push_back({PointTopic(FindingTable::passband, 1, column).place, Severity::warning,
                        std::string("Passband points: every ") + kNames[column - 2] +
                            " is negative. Are they in dB? Ratios are wanted."});
  }
}

}  // namespace

void FindTypingSlips(const ResponseRecord& record, std::vector<Finding>& findings) {
  FindLostText(record, findings);
  const auto freqNorm = ParseNumber(record.Slot(slot::kFreqNorm));
  if (freqNorm && *freqNorm > 0) {
    FindOtherUnit(FindingTable::passband, record.passband, record.nFreqPoints, *freqNorm, findings);
    if (IsYes(record.Slot(slot::kEqualDelay))) {
      FindOtherUnit(FindingTable::delay, record.delay, record.nDelayPoints, *freqNorm, findings);
    }
  }
  FindDecibels(record, findings);
}

}  // namespace polefit

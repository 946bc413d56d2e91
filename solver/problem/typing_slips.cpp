#include "solver/problem/typing_slips.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <string>
#include <utility>

#include "base/text.h"
#include "base/text_format.h"
#include "record/question_catalogue.h"
#include "solver/problem/answers.h"

namespace polefit {

namespace {

/// Data rarely lie as a whole so far beyond the band, or end so far below its upper limit.
constexpr double kFarAbove = 5;
constexpr double kFarBelow = 0.1;
/// Where the highest frequency lies as seen from Freq Norm, a stopband included.
constexpr double kEndsEarly = 0.5;
constexpr double kEndsLate = 10;

/// The frequencies of a table; empty when one of them is none, which is a fault of its own.
template <std::size_t Columns>
std::vector<double> FrequenciesOf(const PointLists<Columns>& points, int count) {
  std::vector<double> numbers;
  numbers.reserve(static_cast<std::size_t>(std::max(count, 0)));
  for (int row = 1; row <= count; ++row) {
    const auto number = ParseNumber(points.At(row, kFrequencyColumn));
    if (!number) return {};
    numbers.push_back(*number);
  }
  return numbers;
}

std::string AndMore(int others) {
  return others > 0 ? ", and " + std::to_string(others) + " more such." : ".";
}

class SlipFinder {
 public:
  SlipFinder(const ResponseRecord& record, AnswerReader& answers)
      : record_(record),
        answers_(answers),
        freqNorm_(ParseNumber(record.Slot(slot::kFreqNorm)).value_or(0)) {}

  void Find(const std::vector<LongRow>& longRows) {
    FindOddFlags();
    FindLostText();
    FindLongRows(longRows);
    const std::vector<double> passband = FrequenciesOf(record_.passband, record_.nFreqPoints);
    FindInTable(FindingTable::passband, record_.passband, passband);
    const std::vector<double> delay = FrequenciesOf(record_.delay, record_.nDelayPoints);
    FindInTable(FindingTable::delay, record_.delay, delay);
    if (passband.empty() || freqNorm_ <= 0) return;
    const bool isOtherUnit = FindOtherUnit(FindingTable::passband, passband);
    if (!isOtherUnit) FindFarEnd(*std::max_element(passband.begin(), passband.end()));
    if (IsYes(record_.Slot(slot::kEqualDelay))) FindOtherUnit(FindingTable::delay, delay);
    FindZerosOnPoints(passband);
  }

 private:
  /// A tick is exactly "Y" or "y"; "yes" or "1" are none, and the file does not show it.
  void FindOddFlags() {
    for (const Question& question : kQuestions) {
      if (question.kind != AnswerKind::flag) continue;
      const std::string& answer = record_.Slot(question.slot);
      const bool isPlain = answer == "Y" || answer == "y" || answer == "N" || answer == "n";
      if (isPlain) continue;
      answers_.Warn(ShortQuestionTopic(question.slot),
                    ": \"" + answer + "\" counts as no; only Y or y is yes.");
    }
  }

  /// A file holds a value up to its first "!", without tabs, and reads "-999..." as empty.
  void FindLostText() {
    const auto look = [this](const Topic& topic, const std::string& text) {
      const bool isCut = text.find_first_of("!\t") != std::string::npos;
      if (!isCut && !text.starts_with("-999")) return;
      answers_.Warn(topic, ": the file will not give \"" + text + "\" back" +
                               (isCut ? ": a value ends at a \"!\", and tabs fall out."
                                      : ": what begins with -999 is read as empty."));
    };
    for (const Question& question : kQuestions) {
      look(ShortQuestionTopic(question.slot), record_.Slot(question.slot));
    }
    const std::string notes(kNotesQuestion);
    look({{.question = notes, .row = 1}, "Note 1"}, record_.Note1);
    look({{.question = notes, .row = 2}, "Note 2"}, record_.Note2);
  }

  void FindLongRows(const std::vector<LongRow>& longRows) {
    if (longRows.empty()) return;
    const LongRow& first = longRows.front();
    const int columns =
        first.table == FindingTable::passband ? PassbandLists::kColumns : DelayLists::kColumns;
    std::string reason;
    for (const std::string& word : Words(first.text)) {
      const std::optional<std::string> meant = WithDecimalPoint(word);
      if (!meant) continue;
      const std::size_t comma = word.find(',');
      reason = ": \"" + word + "\" is read as " + word.substr(0, comma) + " and " +
               word.substr(comma + 1) + "; type " + *meant;
      break;
    }
    answers_.Warn(PointTopic(first.table, first.row),
                  ": " + std::to_string(first.cells) + " cells for " + std::to_string(columns) +
                      " columns" + reason + AndMore(static_cast<int>(longRows.size()) - 1));
  }

  template <std::size_t Columns>
  void FindInTable(FindingTable table, const PointLists<Columns>& points,
                   const std::vector<double>& frequencies) {
    FindFalling(table, points, frequencies);
    FindRepeated(table, points, frequencies);
  }

  /// The first point whose frequency lies below the one before, and how many there are.
  template <std::size_t Columns>
  void FindFalling(FindingTable table, const PointLists<Columns>& points,
                   const std::vector<double>& frequencies) {
    int first = 0;
    int falling = 0;
    for (std::size_t i = 1; i < frequencies.size(); ++i) {
      if (frequencies[i] >= frequencies[i - 1]) continue;
      if (falling++ == 0) first = static_cast<int>(i) + 1;
    }
    if (falling == 0) return;
    answers_.Warn(PointTopic(table, first, 1),
                  ": frequency " + points.At(first, 1) + " lies below " + points.At(first - 1, 1) +
                      " of the point before" + AndMore(falling - 1),
                  Cure::sortRows);
  }

  /// The first frequency that stands in a former point too, and how many such points there are.
  template <std::size_t Columns>
  void FindRepeated(FindingTable table, const PointLists<Columns>& points,
                    const std::vector<double>& frequencies) {
    std::vector<std::size_t> order(frequencies.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const auto isBefore = [&](std::size_t one, std::size_t other) {
      return frequencies[one] < frequencies[other];
    };
    if (!std::is_sorted(order.begin(), order.end(), isBefore)) {
      std::stable_sort(order.begin(), order.end(), isBefore);
    }
    std::size_t first = frequencies.size();
    std::size_t former = 0;
    int repeated = 0;
    for (std::size_t i = 1; i < order.size(); ++i) {
      if (frequencies[order[i]] != frequencies[order[i - 1]]) continue;
      ++repeated;
      if (order[i] >= first) continue;
      first = order[i];
      former = order[i - 1];
    }
    if (repeated == 0) return;
    const int row = static_cast<int>(first) + 1;
    answers_.Warn(PointTopic(table, row, 1),
                  ": frequency " + points.At(row, 1) + " stands in point " +
                      std::to_string(former + 1) + " already" + AndMore(repeated - 1),
                  Cure::dropRepeatedRows);
  }

  /// The unit in which the highest frequency would be about Freq Norm.
  Cure UnitCure(double highest) const {
    const std::pair<double, Cure> units[] = {{1e-3, Cure::kilohertzToMegahertz},
                                             {1e-6, Cure::hertzToMegahertz},
                                             {1e3, Cure::gigahertzToMegahertz}};
    for (const auto& [factor, cure] : units) {
      const double share = highest * factor / freqNorm_;
      if (share >= kFarBelow && share <= kFarAbove) return cure;
    }
    return Cure::none;
  }

  /// 0 is the same in every unit.
  bool FindOtherUnit(FindingTable table, const std::vector<double>& frequencies) {
    double lowest = std::numeric_limits<double>::infinity();
    double highest = 0;
    for (const double frequency : frequencies) {
      if (frequency > 0) lowest = std::min(lowest, frequency);
      highest = std::max(highest, frequency);
    }
    const bool isAbove = lowest > kFarAbove * freqNorm_;
    if (highest <= 0 || (!isAbove && highest >= kFarBelow * freqNorm_)) return false;
    const bool hasZero = std::ranges::find(frequencies, 0) != frequencies.end();
    const int row = isAbove ? 1 : static_cast<int>(frequencies.size());
    answers_.Warn(PointTopic(table, row, 1),
                  std::string(": all frequencies ") + (isAbove && hasZero ? "but 0 " : "") +
                      (isAbove ? "lie above 5 times Freq Norm. Are they in Hz or kHz? Both are "
                                 "taken in MHz."
                               : "lie below a tenth of Freq Norm. Are they in GHz? Both are "
                                 "taken in MHz."),
                  UnitCure(highest));
    return true;
  }

  void FindFarEnd(double highest) {
    const double share = highest / freqNorm_;
    if (highest <= 0 || (share >= kEndsEarly && share <= kEndsLate)) return;
    answers_.Warn(ShortQuestionTopic(slot::kFreqNorm),
                  ": Freq Norm, the upper passband limit, is " + record_.Slot(slot::kFreqNorm) +
                      " MHz, and the points end at " + Format("%.6g", highest) + " MHz.");
  }

  /// There |H| is 0, whatever the other locations are. A zero at 1 is Freq Norm itself.
  void FindZerosOnPoints(const std::vector<double>& frequencies) {
    constexpr double kRounding = 1e-9;
    const std::vector<std::string> counts = Words(record_.Slot(slot::kZeroCounts));
    if (counts.empty() || ParseNumber(counts.front()).value_or(0) == 0) return;
    for (const std::string& word : Words(record_.Slot(slot::kYzero))) {
      const double zero = ParseNumber(word).value_or(0) * freqNorm_;
      for (std::size_t i = 0; i < frequencies.size(); ++i) {
        if (zero <= 0 || std::abs(frequencies[i] - zero) > kRounding * zero) continue;
        const int row = static_cast<int>(i) + 1;
        const std::string& yout = record_.passband.At(row, kYoutColumn);
        if (ParseNumber(yout).value_or(0) == 0) continue;
        answers_.Warn(ShortQuestionTopic(slot::kYzero),
                      ": the zero " + word + " lies on passband point " + std::to_string(row) +
                          ", whose Yout is " + yout + ", not 0.");
        break;
      }
    }
  }

  const ResponseRecord& record_;
  AnswerReader& answers_;
  /// 0 where the answer is no number.
  double freqNorm_;
};

}  // namespace

void FindTypingSlips(const ResponseRecord& record, const std::vector<LongRow>& longRows,
                     std::vector<Finding>& findings) {
  AnswerReader answers(findings);
  SlipFinder(record, answers).Find(longRows);
  SortByQuestion(findings);
}

}  // namespace polefit

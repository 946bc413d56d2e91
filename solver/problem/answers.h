#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "record/finding.h"
#include "record/response_record.h"

namespace polefit {

/// What a finding is about: where that is, and what its sentence begins with.
struct Topic {
  FindingPlace place;
  std::string name;
};

/// "Question 8 (pole pairs, real)" for slot 10.
Topic QuestionTopic(int slot);

/// "Question 8" for slot 10.
Topic ShortQuestionTopic(int slot);

/// "Passband point 4". The column is the one with the fault, 0 for the whole row.
Topic PointTopic(FindingTable table, int row, int column = 0);

/// The number that the whole text is, with a decimal point and perhaps an exponent. Blanks around
/// it are passed over; NaN and infinity are no numbers.
std::optional<double> ParseNumber(std::string_view text);

/// Whether a text is a number, but too large or too close to 0 to be worked with.
bool IsOutOfRange(std::string_view text);

/// The number that a text with a decimal comma is meant to be, with a point: "0.92" for "0,92".
std::optional<std::string> WithDecimalPoint(const std::string& text);

/// The words of a text, separated by blanks; and the text of words.
std::vector<std::string> Words(std::string_view text);
std::string Joined(const std::vector<std::string>& words);

/// How many poles or zeros of one kind a constellation may have.
inline constexpr int kMostOfAKind = 40;

/// The number that stands as a word of the answer, counted from 0, brought into 0 to kMostOfAKind;
/// 0 where none does.
int CountAt(const ResponseRecord& record, int slot, std::size_t word);

/// The answers of a record as numbers. Every fault goes to the findings, begun with the topic, and
/// the result is then empty.
class AnswerReader {
 public:
  explicit AnswerReader(std::vector<Finding>& findings) : findings_(findings) {}

  /// One number.
  std::optional<double> Number(const Topic& topic, const std::string& answer);
  /// The answer to a question that takes one number.
  std::optional<double> Number(const ResponseRecord& record, int slot) {
    return Number(QuestionTopic(slot), record.Slot(slot));
  }
  /// `count` numbers; `wantedBy` is the question that asks for so many.
  std::vector<double> Numbers(const Topic& topic, const std::string& answer, int count,
                              const std::string& wantedBy);
  /// As many whole numbers from 0 to kMostOfAKind as `counts` takes. All stay 0 after a fault,
  /// which gives false.
  bool Counts(const Topic& topic, const std::string& answer, std::span<int> counts);

  /// `rest` is what the sentence says behind the topic's name.
  void Fault(const Topic& topic, const std::string& rest, Cure cure = Cure::none) {
    findings_.push_back({topic.place, Severity::fault, topic.name + rest, cure});
  }
  /// An answer is missing.
  void Open(const Topic& topic, const std::string& rest) {
    findings_.push_back({topic.place, Severity::open, topic.name + rest});
  }
  void Warn(const Topic& topic, const std::string& rest, Cure cure = Cure::none) {
    findings_.push_back({topic.place, Severity::warning, topic.name + rest, cure});
  }

 private:
  std::vector<Finding>& findings_;
};

}  // namespace polefit

#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "record/response_record.h"

namespace polefit {

/// "8" for slot 10: the number of a question as the user sees it.
std::string_view QuestionNumber(int slot);

/// "Question 8 (pole pairs, real)" for slot 10.
std::string QuestionName(int slot);

/// The number that the whole text is, with a decimal point and perhaps an exponent. Blanks around
/// it are passed over; NaN and infinity are no numbers.
std::optional<double> ParseNumber(std::string_view text);

/// Whether a text is a number, but too large or too close to 0 to be worked with.
bool IsOutOfRange(std::string_view text);

/// The words of a text, separated by blanks.
std::vector<std::string> Words(std::string_view text);

/// Collects what is wrong and what is odd with the answers, in the words that the user reads.
struct Findings {
  std::vector<std::string> faults;
  std::vector<std::string> warnings;
};

/// The answers of a record as numbers. Every fault goes to the findings, named by `name`, and the
/// result is then empty.
class AnswerReader {
 public:
  explicit AnswerReader(Findings& findings) : findings_(findings) {}

  /// One number.
  std::optional<double> Number(const std::string& name, const std::string& answer);
  /// `count` numbers; `wantedBy` is the question that asks for so many.
  std::vector<double> Numbers(const std::string& name, const std::string& answer, int count,
                              const std::string& wantedBy);
  /// As many whole numbers from 0 to 40 as `counts` takes. All stay 0 after a fault, which gives
  /// false.
  bool Counts(const std::string& name, const std::string& answer, std::span<int> counts);

  void Fault(const std::string& text) { findings_.faults.push_back(text); }
  void Warn(const std::string& text) { findings_.warnings.push_back("Warning: " + text); }

 private:
  Findings& findings_;
};

/// Whether a flag is ticked.
inline bool IsYes(const std::string& answer) {
  return answer == "Y" || answer == "y";
}

}  // namespace polefit

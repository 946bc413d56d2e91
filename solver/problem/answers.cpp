#include "solver/problem/answers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

#include "record/question_catalogue.h"

namespace polefit {

namespace {

/// Strict where the form is lenient: a number that is read only in part would be solved wrongly.
std::errc Parse(std::string_view text, double& value) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  while (text.ends_with(' ')) text.remove_suffix(1);
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (end != text.data() + text.size()) return std::errc::invalid_argument;
  if (error == std::errc() && !std::isfinite(value)) return std::errc::invalid_argument;
  return error;
}

Cure CureOf(const std::string& text) {
  return WithDecimalPoint(text) ? Cure::commasToPoints : Cure::none;
}

std::string NotANumber(const std::string& text) {
  if (IsOutOfRange(text)) return ": \"" + text + "\" is out of range (1e-308 to 1e308).";
  return ": \"" + text + "\" is not a number (decimal point, no comma).";
}

}  // namespace

Topic QuestionTopic(int slot) {
  Topic topic = ShortQuestionTopic(slot);
  topic.name += " (" + std::string(QuestionSubject(slot)) + ")";
  return topic;
}

Topic ShortQuestionTopic(int slot) {
  const std::string number(QuestionNumber(slot));
  return {{.question = number}, "Question " + number};
}

Topic PointTopic(FindingTable table, int row, int column) {
  const char* const block = table == FindingTable::passband ? "Passband point " : "Delay point ";
  return {{.table = table, .row = row, .column = column}, block + std::to_string(row)};
}

std::optional<double> ParseNumber(std::string_view text) {
  double value = 0;
  if (Parse(text, value) != std::errc()) return std::nullopt;
  return value;
}

bool IsOutOfRange(std::string_view text) {
  double value = 0;
  return Parse(text, value) == std::errc::result_out_of_range;
}

std::optional<std::string> WithDecimalPoint(const std::string& text) {
  if (std::count(text.begin(), text.end(), ',') != 1) return std::nullopt;
  std::string meant = text;
  std::replace(meant.begin(), meant.end(), ',', '.');
  return ParseNumber(meant) ? std::optional(meant) : std::nullopt;
}

std::vector<std::string> Words(std::string_view text) {
  std::vector<std::string> words;
  while (true) {
    const std::size_t start = text.find_first_not_of(' ');
    if (start == std::string_view::npos) return words;
    const std::string_view word = text.substr(start, text.find(' ', start) - start);
    words.emplace_back(word);
    text.remove_prefix(start + word.size());
  }
}

std::string Joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

int CountAt(const ResponseRecord& record, int slot, std::size_t word) {
  const std::vector<std::string> words = Words(record.Slot(slot));
  const double count = word < words.size() ? ParseNumber(words[word]).value_or(0) : 0;
  return static_cast<int>(std::clamp<double>(count, 0, kMostOfAKind));
}

std::optional<double> AnswerReader::Number(const Topic& topic, const std::string& answer) {
  const std::optional<double> value = ParseNumber(answer);
  if (value) return value;
  const std::vector<std::string> words = Words(answer);
  if (words.empty()) {
    Open(topic, ": the answer is empty; one number is needed.");
  } else if (words.size() > 1 && std::all_of(words.begin(), words.end(), ParseNumber)) {
    Fault(topic, ": " + std::to_string(words.size()) + " values given, one needed.");
  } else {
    Fault(topic, NotANumber(answer), CureOf(answer));
  }
  return std::nullopt;
}

std::vector<double> AnswerReader::Numbers(const Topic& topic, const std::string& answer, int count,
                                          const std::string& wantedBy) {
  if (count == 1 && Words(answer).empty()) {
    Number(topic, answer);
    return {};
  }
  std::vector<double> values;
  bool isClean = true;
  for (const std::string& word : Words(answer)) {
    const std::optional<double> value = ParseNumber(word);
    if (!value) {
      Fault(topic, NotANumber(word), CureOf(word));
      isClean = false;
    }
    values.push_back(value.value_or(0));
  }
  if (values.empty()) {
    Open(topic, ": the answer is empty; " + std::to_string(count) + " numbers are needed.");
  } else if (values.size() != static_cast<std::size_t>(count)) {
    Fault(topic,
          ": " + std::to_string(values.size()) +
              (values.size() == 1 ? " value given, " : " values given, ") + wantedBy +
              " asks for " + std::to_string(count) + ".",
          isClean ? Cure::fitList : Cure::none);
    isClean = false;
  }
  return isClean ? values : std::vector<double>();
}

bool AnswerReader::Counts(const Topic& topic, const std::string& answer, std::span<int> counts) {
  const std::vector<std::string> words = Words(answer);
  std::vector<int> found;
  for (const std::string& word : words) {
    int value = -1;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    const bool isWhole = error == std::errc() && end == word.data() + word.size();
    if (isWhole && value >= 0 && value <= kMostOfAKind) found.push_back(value);
  }
  if (words.size() == counts.size() && found.size() == counts.size()) {
    std::copy(found.begin(), found.end(), counts.begin());
    return true;
  }
  const std::string numbers = std::to_string(counts.size()) + " whole numbers";
  if (words.empty()) {
    Open(topic, ": the answer is empty; " + numbers + " are needed.");
  } else {
    Fault(topic, ": \"" + answer + "\" is not " + numbers + " from 0 to " +
                     std::to_string(kMostOfAKind) + ".");
  }
  return false;
}

}  // namespace polefit

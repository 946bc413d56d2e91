#include "exchange/import/remembered.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

#include "exchange/read/decoding.h"

namespace polefit {

namespace {

constexpr std::size_t kMostKinds = 30;
/// A file with a wilder heading than this is not remembered.
constexpr std::size_t kLongestKind = 2000;

/// In one word, so that blanks part it from the choices.
std::string KindOf(const SourceTable& table) {
  std::string kind = std::to_string(static_cast<int>(table.kind));
  for (const Column& column : table.columns) {
    kind += '|';
    for (const char c : column.heading) kind += c == ' ' || c == '\t' ? '_' : c;
  }
  return kind;
}

/// Whole numbers in a fixed order, each with the values that it may have.
class Numbers {
 public:
  /// Makes a text of what it visits.
  Numbers() = default;
  /// Sets what it visits from a text.
  explicit Numbers(const std::vector<std::string_view>& words) : words_(words), isReading_(true) {}

  template <typename Value>
  void Visit(Value& value, int least, int most) {
    if (!isReading_) {
      text_ += " " + std::to_string(static_cast<int>(value));
      return;
    }
    int number = 0;
    const std::string_view word = next_ < words_.size() ? words_[next_] : std::string_view();
    ++next_;
    const auto result = std::from_chars(word.data(), word.data() + word.size(), number);
    isFitting_ = isFitting_ && result.ec == std::errc() && number >= least && number <= most;
    if (isFitting_) value = static_cast<Value>(number);
  }

  const std::string& Text() const { return text_; }
  bool IsFitting() const { return isFitting_ && next_ == words_.size(); }

 private:
  std::vector<std::string_view> words_;
  bool isReading_ = false;
  bool isFitting_ = true;
  std::size_t next_ = 0;
  std::string text_;
};

void VisitChoices(ImportPlan& plan, Numbers& numbers) {
  const int last = plan.source.table.Columns() - 1;
  ImportChoices& choices = plan.choices;
  const auto column = [&](int& one, int least = kNoColumn) { numbers.Visit(one, least, last); };
  numbers.Visit(choices.role, 0, static_cast<int>(Role::want));
  column(choices.frequency, 0);
  numbers.Visit(choices.unit, 0, static_cast<int>(FrequencyUnit::gigahertz));
  for (ValueColumn* const value : {&choices.value, &choices.other}) {
    column(value->column, value == &choices.value ? 0 : kNoColumn);
    numbers.Visit(value->kind, 0, static_cast<int>(ValueKind::realImaginary));
    column(value->second);
  }
  numbers.Visit(plan.otherSource, 0, static_cast<int>(OtherSource::column));
  column(choices.weight);
  numbers.Visit(choices.delaySource, 0, static_cast<int>(DelaySource::phase));
  column(choices.delay);
  column(choices.delaySecond);
  numbers.Visit(choices.delayUnit, 0, static_cast<int>(DelayUnit::picoseconds));
  numbers.Visit(choices.angleUnit, 0, static_cast<int>(AngleUnit::radians));
  numbers.Visit(choices.rows.every, 1, 1'000'000);
  numbers.Visit(choices.rows.points, 0, kMostPoints);
  numbers.Visit(choices.rows.logarithmic, 0, 1);
  numbers.Visit(choices.rows.smooth, 0, 999);
  numbers.Visit(choices.rows.normalise, 0, 1);
}

/// A delay needs its column, a column of the other values too.
bool IsWhole(const ImportPlan& plan) {
  const ImportChoices& choices = plan.choices;
  const bool hasDelay = choices.delaySource == DelaySource::none || choices.delay != kNoColumn;
  const bool hasOther =
      plan.otherSource != OtherSource::column || choices.other.column != kNoColumn;
  return hasDelay && hasOther;
}

std::vector<std::string_view> KeptLines(std::string_view kept) {
  std::vector<std::string_view> lines = LinesOf(kept);
  lines.resize(std::min(lines.size(), kMostKinds));
  return lines;
}

}  // namespace

bool Recall(std::string_view kept, ImportPlan& plan) {
  const std::string kind = KindOf(plan.source.table);
  for (const std::string_view line : KeptLines(kept)) {
    std::vector<std::string_view> words = WordsOf(line);
    if (words.size() < 2 || words.front() != kind) continue;
    ImportPlan recalled = plan;
    recalled.parameter = words[1] == "-" ? "" : words[1];
    words.erase(words.begin(), words.begin() + 2);
    Numbers numbers(words);
    VisitChoices(recalled, numbers);
    if (!numbers.IsFitting() || !IsWhole(recalled)) return false;
    const bool hasNoTable = plan.startsProblem && recalled.otherSource == OtherSource::table;
    ChangeOther(recalled, hasNoTable ? OtherSource::one : recalled.otherSource);
    recalled.isKindUnsure = false;
    recalled.isRecalled = true;
    const bool isTooMuch = plan.choices.rows.points > 0 && recalled.choices.rows.points == 0;
    if (isTooMuch) recalled.choices.rows.points = plan.choices.rows.points;
    plan = std::move(recalled);
    return true;
  }
  return false;
}

std::string Remember(std::string_view kept, const ImportPlan& plan) {
  const std::string kind = KindOf(plan.source.table);
  if (kind.size() > kLongestKind) return std::string(kept);
  ImportPlan written = plan;
  // Other files are not remembered, and so not what came from them.
  if (plan.otherSource > OtherSource::column) written.otherSource = OtherSource::one;
  if (plan.isDelayFromFile) written.choices.delaySource = DelaySource::none;
  Numbers numbers;
  VisitChoices(written, numbers);
  std::string text = kind + " " + (plan.parameter.empty() ? "-" : plan.parameter) + numbers.Text();
  for (const std::string_view line : KeptLines(kept)) {
    const std::vector<std::string_view> words = WordsOf(line);
    if (!words.empty() && words.front() != kind) text.append("\n").append(line);
  }
  return text;
}

}  // namespace polefit

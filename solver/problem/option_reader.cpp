#include "solver/problem/option_reader.h"

#include <array>
#include <cmath>
#include <string>

#include "base/text_format.h"
#include "record/question_catalogue.h"

namespace polefit {

namespace {

/// What a solver value must be.
struct Rule {
  double least;
  double most;
  bool isWhole;
};

/// As good as no upper limit, and still an int.
constexpr double kMany = 1e9;

/// "Solver setting 8 (RATIO)" for index 7.
Topic SettingTopic(std::size_t index) {
  const int number = static_cast<int>(index) + 1;
  return {{.table = FindingTable::solverSettings, .row = number},
          "Solver setting " + std::to_string(number) + " (" +
              UpperCase(kSolverQuestions[index].name) + ")"};
}

/// Reads the values of one setting over their defaults.
class SettingReader {
 public:
  SettingReader(const ResponseRecord& record, AnswerReader& answers)
      : record_(record), answers_(answers) {}

  /// The words of setting `index` as numbers; empty for the default, or after a fault.
  std::vector<double> Values(std::size_t index, std::size_t count, const Rule& rule) {
    const std::string& answer = record_.solver[index];
    const Topic topic = SettingTopic(index);
    const std::vector<std::string> words = Words(answer);
    if (words.empty()) return {};
    if (words.size() != count) {
      answers_.Fault(topic, ": \"" + answer + "\" is " + std::to_string(words.size()) +
                                (words.size() == 1 ? " value, " : " values, ") +
                                std::to_string(count) + " needed.");
      return {};
    }
    std::vector<double> values;
    bool isGood = true;
    for (const std::string& word : words) {
      const std::optional<double> value = answers_.Number(topic, word);
      isGood = value && Fits(topic, word, *value, rule) && isGood;
      values.push_back(value.value_or(0));
    }
    return isGood ? values : std::vector<double>();
  }

  void Whole(std::size_t index, double least, double most, int& to) {
    const std::vector<double> values = Values(index, 1, {least, most, true});
    if (!values.empty()) to = static_cast<int>(values[0]);
  }

  void Triple(std::size_t index, double least, std::array<int, 3>& to) {
    const std::vector<double> values = Values(index, 3, {least, kMany, true});
    for (std::size_t i = 0; i < values.size(); ++i) to[i] = static_cast<int>(values[i]);
  }

  /// The value must be above `least`.
  void Above(std::size_t index, double least, double& to) {
    const std::vector<double> values = Values(index, 1, {least, kMany, false});
    if (!values.empty()) to = values[0];
  }

 private:
  bool Fits(const Topic& topic, const std::string& word, double value, const Rule& rule) {
    if (rule.isWhole) {
      if (value == std::floor(value) && value >= rule.least && value <= rule.most) return true;
      if (value > kMany) {
        answers_.Fault(topic, ": " + word + " must be " + Plain(kMany) + " or less.");
        return false;
      }
      const std::string range = rule.most < kMany
                                    ? " from " + Plain(rule.least) + " to " + Plain(rule.most) + "."
                                    : " of " + Plain(rule.least) + " or more.";
      answers_.Fault(topic, ": \"" + word + "\" is not a whole number" + range);
      return false;
    }
    if (value > rule.least) return true;
    answers_.Fault(topic, ": " + word + " must be greater than " + Plain(rule.least) + ".");
    return false;
  }

  static std::string Plain(double value) { return std::to_string(static_cast<int>(value)); }

  const ResponseRecord& record_;
  AnswerReader& answers_;
};

}  // namespace

void ReadOptions(const ResponseRecord& record, AnswerReader& answers, Options& options) {
  SettingReader settings(record, answers);
  settings.Triple(0, 1, options.maxIterations);
  settings.Triple(1, 0, options.detail);
  const std::vector<double> tolerances = settings.Values(2, 3, {0, kMany, false});
  for (std::size_t i = 0; i < tolerances.size(); ++i) options.tolerance[i] = tolerances[i];
  settings.Whole(3, 1, kMany, options.maxSteps);
  settings.Whole(4, 0, kMany, options.stepOut);
  settings.Whole(5, 1, kMany, options.maxEvaluations);
  int setRho = options.beginsWithGaussNewton ? 2 : 1;
  settings.Whole(6, 1, 2, setRho);
  options.beginsWithGaussNewton = setRho == 2;
  settings.Above(7, 2, options.ratio);
  settings.Above(8, 0, options.accuracy);
}

}  // namespace polefit

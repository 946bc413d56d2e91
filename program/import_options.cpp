#include "program/import_options.h"

#include <array>
#include <charconv>
#include <cmath>
#include <functional>
#include <string_view>
#include <utility>

#include "exchange/read/decoding.h"
#include "exchange/read/number_text.h"
#include "record/response_record.h"

namespace polefit {

namespace {

/// More rows than this make no local fit.
constexpr int kLargestWindow = 999;

using Taker = std::function<bool(ImportOptions&, const std::string&)>;

/// An option and what takes its word; false when the word is none for it.
struct Option {
  std::string_view name;
  Taker take;
};

Taker Text(std::string ImportOptions::*member) {
  return [member](ImportOptions& options, const std::string& word) {
    options.*member = word;
    return !word.empty();
  };
}

template <typename Value, typename Target>
Taker OneOf(Target ImportOptions::*member, std::vector<std::pair<std::string_view, Value>> words) {
  return [member, words = std::move(words)](ImportOptions& options, const std::string& word) {
    for (const auto& [name, value] : words) {
      if (word != name) continue;
      options.*member = value;
      return true;
    }
    return false;
  };
}

Taker Whole(int RowChoices::*member, int least, int most) {
  return [=](ImportOptions& options, const std::string& word) {
    int number = 0;
    const char* const end = word.data() + word.size();
    const auto result = std::from_chars(word.data(), end, number);
    options.rows.*member = number;
    return result.ec == std::errc() && result.ptr == end && number >= least && number <= most;
  };
}

Taker Megahertz(double RowChoices::*member) {
  return [=](ImportOptions& options, const std::string& word) {
    options.rows.*member = CellNumber(word, '.');
    return !std::isnan(options.rows.*member);
  };
}

bool TakeUnit(ImportOptions& options, const std::string& word) {
  options.unit = FrequencyUnitOf(word);
  return options.unit.has_value();
}

bool TakeSmooth(ImportOptions& options, const std::string& word) {
  return Whole(&RowChoices::smooth, 1, kLargestWindow)(options, word) &&
         options.rows.smooth % 2 == 1;
}

/// Two counts, as question 6 takes them.
bool TakePoles(ImportOptions& options, const std::string& word) {
  options.poles = word;
  const auto counts = WordsOf(word);
  if (counts.size() != 2) return false;
  for (const std::string_view count : counts) {
    if (count.find_first_not_of("0123456789") != std::string_view::npos) return false;
  }
  return true;
}

const std::array<Option, 20>& WordOptions() {
  using O = ImportOptions;
  static const std::array<Option, 20> kOptions = {{
      {"--as",
       OneOf<Role>(&O::role,
                   {{"model", Role::model}, {"equalise", Role::equalise}, {"want", Role::want}})},
      {"--frequency", Text(&O::frequency)},
      {"--yin", Text(&O::yin)},
      {"--yout", Text(&O::yout)},
      {"--weight", Text(&O::weight)},
      {"--delay", Text(&O::delay)},
      {"--angle", Text(&O::angle)},
      {"--imag", Text(&O::imag)},
      {"--parameter", Text(&O::parameter)},
      {"--unit", TakeUnit},
      {"--values", OneOf<ValueKind>(&O::values, {{"linear", ValueKind::linear},
                                                 {"db", ValueKind::decibel},
                                                 {"db10", ValueKind::powerDecibel},
                                                 {"ri", ValueKind::realImaginary},
                                                 {"ma", ValueKind::magnitudeAngle}})},
      {"--delay-unit", OneOf<DelayUnit>(&O::delayUnit, {{"s", DelayUnit::seconds},
                                                        {"ms", DelayUnit::milliseconds},
                                                        {"us", DelayUnit::microseconds},
                                                        {"ns", DelayUnit::nanoseconds},
                                                        {"ps", DelayUnit::picoseconds}})},
      {"--delay-from", Text(&O::delayFrom)},
      {"--from", Megahertz(&RowChoices::from)},
      {"--to", Megahertz(&RowChoices::to)},
      {"--every", Whole(&RowChoices::every, 1, 1'000'000)},
      {"--points", Whole(&RowChoices::points, 2, kMostPoints)},
      {"--smooth", TakeSmooth},
      {"--poles", TakePoles},
      {"--into", Text(&O::into)},
  }};
  return kOptions;
}

bool TakeGrid(ImportOptions& options, const std::string& word) {
  if (word != "file" && word != "table") return false;
  options.grid = word == "file" ? Frequencies::file : Frequencies::table;
  return true;
}

bool TakeSwitch(const std::string& word, ImportOptions& options) {
  if (word == "--log") {
    options.rows.logarithmic = true;
  } else if (word == "--normalise") {
    options.rows.normalise = true;
  } else if (word == "--delay-from-phase") {
    options.delayFromPhase = true;
  } else {
    return false;
  }
  return true;
}

/// What takes the word behind an option; nothing for an unknown one.
Taker TakerOf(const std::string& word) {
  if (word == "--grid") return TakeGrid;
  for (const Option& option : WordOptions()) {
    if (option.name == word) return option.take;
  }
  return {};
}

/// What one option needs of the others.
bool GoTogether(const ImportOptions& options) {
  if (options.grid && options.into.empty()) return false;
  if (options.rows.logarithmic && options.rows.points == 0) return false;
  return options.rows.from <= options.rows.to;
}

}  // namespace

std::optional<ImportOptions> ReadImportOptions(std::span<const std::string> words) {
  ImportOptions options;
  std::vector<std::string> files;
  bool onlyFiles = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (onlyFiles || !word.starts_with('-') || word == "-") {
      files.push_back(word);
    } else if (word == "--") {
      onlyFiles = true;
    } else if (!TakeSwitch(word, options)) {
      const Taker take = TakerOf(word);
      if (!take || ++i == words.size() || !take(options, words[i])) return std::nullopt;
    }
  }
  if (files.size() != 2 || files[0].empty() || files[1].empty()) return std::nullopt;
  options.file = files[0];
  options.out = files[1];
  if (!GoTogether(options)) return std::nullopt;
  return options;
}

}  // namespace polefit

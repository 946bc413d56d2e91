#include "exchange/import/guess.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "base/text.h"
#include "exchange/read/decoding.h"

namespace polefit {

namespace {

/// Values all above this are no magnitudes of a filter, and may be attenuation, gain in dB or
/// something else.
constexpr double kLargestPlainValue = 3;
/// Delay in the unit times the largest frequency: what a filter of a few poles has.
constexpr double kUsualCycles = 1;

bool HasNumbers(const SourceTable& table, int column) {
  for (int row = 0; row < table.Rows(); ++row) {
    if (!std::isnan(table.Number(row, column))) return true;
  }
  return false;
}

const Meaning& MeaningAt(const SourceTable& table, int column) {
  return table.columns[static_cast<std::size_t>(column)].meaning;
}

/// The column of the frequencies: by its heading, else the first with numbers that is no count of
/// the rows.
int GuessFrequency(const SourceTable& table) {
  const int named = ColumnOfQuantity(table, Quantity::frequency);
  if (named != kNoColumn) return named;
  for (int column = 0; column < table.Columns(); ++column) {
    if (MeaningAt(table, column).quantity != Quantity::index && HasNumbers(table, column)) {
      return column;
    }
  }
  return 0;
}

bool IsValue(Quantity quantity) {
  return quantity == Quantity::linear || quantity == Quantity::decibel ||
         quantity == Quantity::real || quantity == Quantity::unknown;
}

/// Transmission before reflection: of several columns one that names 21 is what is meant.
bool NamesTransmission(const std::string& heading) {
  return BareName(heading).find("s21") != std::string::npos;
}

int FindNamed(const SourceTable& table, std::string_view name) {
  for (int column = 0; column < table.Columns(); ++column) {
    if (BareName(table.columns[static_cast<std::size_t>(column)].heading) == name) return column;
  }
  return kNoColumn;
}

int GuessValue(const SourceTable& table, int frequency, Role role) {
  const int named = FindNamed(table, role == Role::equalise ? "yin" : "yout");
  if (named != kNoColumn) return named;
  int best = kNoColumn;
  int bestRank = 0;
  for (int column = 0; column < table.Columns(); ++column) {
    const Quantity quantity = MeaningAt(table, column).quantity;
    if (column == frequency || !IsValue(quantity) || !HasNumbers(table, column)) continue;
    const bool isNamed = quantity != Quantity::unknown;
    const bool is21 = NamesTransmission(table.columns[static_cast<std::size_t>(column)].heading);
    const int rank = 1 + (isNamed ? 1 : 0) + (is21 ? 2 : 0);
    if (rank > bestRank) {
      best = column;
      bestRank = rank;
    }
  }
  if (best != kNoColumn) return best;
  return frequency == 0 && table.Columns() > 1 ? 1 : 0;
}

std::string KindGrounds(const SourceTable& table, int column, ValueKind kind) {
  if (table.kind != FileKind::delimited) return {};
  if (kind == ValueKind::realImaginary) return "real + imaginary, from the headings";
  const std::string name = kind == ValueKind::decibel ? "dB" : "linear";
  const Quantity quantity = MeaningAt(table, column).quantity;
  const Quantity said = kind == ValueKind::decibel ? Quantity::decibel : Quantity::linear;
  if (quantity == said) {
    return name + ", from the heading";
  }
  return name + (kind == ValueKind::decibel ? ", a value is below 0" : ", no value is below 0");
}

void GuessUnit(const SourceTable& table, Guess& guess) {
  const Meaning& meaning = MeaningAt(table, guess.choices.frequency);
  guess.choices.unit = meaning.frequencyUnit.value_or(FrequencyUnit::hertz);
  if (table.kind != FileKind::delimited) return;
  guess.unitGrounds = std::string(NameOf(guess.choices.unit)) +
                      (meaning.frequencyUnit ? ", from the heading" : ", nothing says another");
}

void GuessValues(const SourceTable& table, Guess& guess) {
  ImportChoices& choices = guess.choices;
  if (!table.parameters.empty()) {
    const std::string name(1, table.parameters.front().name.front());
    if (!ChooseParameter(table, name + "21", choices.value)) {
      ChooseParameter(table, table.parameters.front().name, choices.value);
    }
    return;
  }
  choices.value.column = GuessValue(table, choices.frequency, choices.role);
  const auto kind = GuessKind(table, choices.value.column);
  guess.isKindUnsure = !kind;
  choices.value.kind = kind.value_or(ValueKind::linear);
  if (choices.value.kind == ValueKind::realImaginary) {
    choices.value.second = SecondColumn(table, choices.value.column, Quantity::imaginary);
  }
  guess.kindGrounds =
      kind ? KindGrounds(table, choices.value.column, *kind) : "nothing says what kind these are";
}

/// A delay column, else the angle that goes with the values; none is taken unasked.
void GuessDelay(const SourceTable& table, ImportChoices& choices) {
  choices.delay = ColumnOfQuantity(table, Quantity::delay);
  if (choices.delay != kNoColumn) {
    choices.delayUnit = GuessDelayUnit(table, choices.delay, choices.frequency, choices.unit);
    return;
  }
  ChoosePhase(table, choices);
}

int NumberedColumn(const SourceTable& table, std::string_view name) {
  int number = 0;
  const char* const end = name.data() + name.size();
  const auto result = std::from_chars(name.data(), end, number);
  const bool isNumber = result.ec == std::errc() && result.ptr == end;
  return isNumber && number >= 1 && number <= table.Columns() ? number - 1 : kNoColumn;
}

}  // namespace

Guess GuessChoices(const SourceTable& table, Role role) {
  Guess guess;
  guess.choices.role = role;
  if (table.Columns() == 0) return guess;
  guess.choices.frequency = GuessFrequency(table);
  GuessUnit(table, guess);
  GuessValues(table, guess);
  GuessDelay(table, guess.choices);
  return guess;
}

std::optional<ValueKind> GuessKind(const SourceTable& table, int column) {
  const Quantity quantity = MeaningAt(table, column).quantity;
  if (quantity == Quantity::real) {
    const bool hasOther = SecondColumn(table, column, Quantity::imaginary) != kNoColumn;
    return hasOther ? ValueKind::realImaginary : ValueKind::linear;
  }
  if (quantity == Quantity::decibel) return ValueKind::decibel;
  const bool isFixed = table.kind != FileKind::delimited;
  if (quantity == Quantity::linear && isFixed) return ValueKind::linear;
  double least = std::numeric_limits<double>::infinity();
  for (int row = 0; row < table.Rows(); ++row) {
    // A comparison with NaN is false, so that cells without a number have no say.
    if (table.Number(row, column) < least) least = table.Number(row, column);
  }
  if (least < 0) return ValueKind::decibel;
  const bool isSure = quantity == Quantity::linear || least <= kLargestPlainValue || isFixed;
  return isSure ? std::optional(ValueKind::linear) : std::nullopt;
}

int SecondColumn(const SourceTable& table, int column, Quantity wanted) {
  for (int next = column + 1; next < table.Columns(); ++next) {
    if (MeaningAt(table, next).quantity == wanted) return next;
    // The next value begins what is no more of this one.
    if (IsValue(MeaningAt(table, next).quantity)) break;
  }
  return kNoColumn;
}

DelayUnit GuessDelayUnit(const SourceTable& table, int column, int frequency, FrequencyUnit unit) {
  const auto said = MeaningAt(table, column).delayUnit;
  if (said) return *said;
  double largestDelay = 0;
  double largestFrequency = 0;
  for (int row = 0; row < table.Rows(); ++row) {
    const double delay = std::abs(table.Number(row, column));
    if (delay > largestDelay) largestDelay = delay;
    if (table.Number(row, frequency) > largestFrequency) {
      largestFrequency = table.Number(row, frequency);
    }
  }
  const double megahertz = largestFrequency * std::pow(10, PlacesToMegahertz(unit));
  DelayUnit best = DelayUnit::nanoseconds;
  double least = std::numeric_limits<double>::infinity();
  for (const DelayUnit one : {DelayUnit::nanoseconds, DelayUnit::seconds, DelayUnit::microseconds,
                              DelayUnit::picoseconds}) {
    const double cycles = largestDelay * std::pow(10, PlacesToNanoseconds(one)) * megahertz / 1000;
    const double distance = std::abs(std::log10(cycles / kUsualCycles));
    if (distance < least) {
      least = distance;
      best = one;
    }
  }
  return best;
}

int FindColumn(const SourceTable& table, std::string_view name) {
  name = TrimWhite(name);
  const std::string lower = LowerCase(name);
  const auto find = [&](auto fits) {
    for (int column = 0; column < table.Columns(); ++column) {
      if (fits(table.columns[static_cast<std::size_t>(column)].heading)) return column;
    }
    return kNoColumn;
  };
  int column = find([&](const std::string& heading) { return heading == name; });
  if (column == kNoColumn) column = find([&](const auto& h) { return LowerCase(h) == lower; });
  if (column == kNoColumn) column = NumberedColumn(table, name);
  const std::string bare = BareName(name);
  if (column != kNoColumn || bare.empty()) return column;
  column = find([&](const std::string& heading) { return BareName(heading) == bare; });
  if (column == kNoColumn) {
    // "Gain" for "Gain (dB)": the name with less behind it.
    column = find([&](const std::string& heading) { return BareName(heading).starts_with(bare); });
  }
  return column;
}

bool ChoosePhase(const SourceTable& table, ImportChoices& choices) {
  choices.delaySecond = kNoColumn;
  choices.delay = kNoColumn;
  if (choices.value.column == kNoColumn) return false;
  if (choices.value.kind == ValueKind::realImaginary) {
    choices.delay = choices.value.column;
    choices.delaySecond = choices.value.second;
    return choices.delaySecond != kNoColumn;
  }
  choices.delay = SecondColumn(table, choices.value.column, Quantity::angle);
  if (choices.delay == kNoColumn) choices.delay = ColumnOfQuantity(table, Quantity::angle);
  if (choices.delay == kNoColumn) return false;
  choices.angleUnit = MeaningAt(table, choices.delay).angleUnit.value_or(AngleUnit::degrees);
  return true;
}

int ColumnOfQuantity(const SourceTable& table, Quantity quantity) {
  for (int column = 0; column < table.Columns(); ++column) {
    if (MeaningAt(table, column).quantity == quantity && HasNumbers(table, column)) return column;
  }
  return kNoColumn;
}

bool ChooseParameter(const SourceTable& table, std::string_view name, ValueColumn& value) {
  const std::string bare = BareName(name);
  value = {};
  for (const NetworkParameter& parameter : table.parameters) {
    if (BareName(parameter.name) == bare) value.column = parameter.column;
  }
  for (int column = 0; table.parameters.empty() && column < table.Columns(); ++column) {
    const Column& one = table.columns[static_cast<std::size_t>(column)];
    const bool names = BareName(one.heading).find(bare) != std::string::npos;
    if (names && IsValue(one.meaning.quantity) && value.column == kNoColumn) value.column = column;
  }
  if (value.column == kNoColumn) return false;
  value.kind = GuessKind(table, value.column).value_or(ValueKind::linear);
  const Quantity first = MeaningAt(table, value.column).quantity;
  if (!table.parameters.empty() && first == Quantity::linear) {
    value.kind = ValueKind::magnitudeAngle;
  }
  if (value.kind == ValueKind::realImaginary) value.second = value.column + 1;
  return true;
}

}  // namespace polefit

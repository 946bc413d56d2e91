#include "exchange/read/units.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "base/text.h"

namespace polefit {

namespace {

template <typename Unit>
using Word = std::pair<std::string_view, Unit>;

template <typename Unit>
std::optional<Unit> Find(std::span<const Word<Unit>> words, std::string_view text) {
  const std::string lower = LowerCase(text);
  for (const auto& [word, unit] : words) {
    if (lower == word) return unit;
  }
  return std::nullopt;
}

}  // namespace

int PlacesToMegahertz(FrequencyUnit unit) {
  return 3 * static_cast<int>(unit) - 6;
}

int PlacesToNanoseconds(DelayUnit unit) {
  return 9 - 3 * static_cast<int>(unit);
}

std::string_view NameOf(FrequencyUnit unit) {
  static constexpr std::array<std::string_view, 4> kNames = {"Hz", "kHz", "MHz", "GHz"};
  return kNames.at(static_cast<std::size_t>(unit));
}

std::string_view NameOf(DelayUnit unit) {
  static constexpr std::array<std::string_view, 5> kNames = {"s", "ms", "us", "ns", "ps"};
  return kNames.at(static_cast<std::size_t>(unit));
}

std::string_view NameOf(AngleUnit unit) {
  return unit == AngleUnit::degrees ? "deg" : "rad";
}

std::optional<FrequencyUnit> FrequencyUnitOf(std::string_view word) {
  static constexpr Word<FrequencyUnit> kWords[] = {{"hz", FrequencyUnit::hertz},
                                                   {"khz", FrequencyUnit::kilohertz},
                                                   {"mhz", FrequencyUnit::megahertz},
                                                   {"ghz", FrequencyUnit::gigahertz},
                                                   {"hertz", FrequencyUnit::hertz}};
  return Find<FrequencyUnit>(kWords, word);
}

std::optional<DelayUnit> DelayUnitOf(std::string_view word) {
  // The micro sign and the Greek letter are two characters that look alike.
  static constexpr Word<DelayUnit> kWords[] = {
      {"s", DelayUnit::seconds},         {"sec", DelayUnit::seconds},
      {"seconds", DelayUnit::seconds},   {"ms", DelayUnit::milliseconds},
      {"msec", DelayUnit::milliseconds}, {"us", DelayUnit::microseconds},
      {"usec", DelayUnit::microseconds}, {"µs", DelayUnit::microseconds},
      {"μs", DelayUnit::microseconds},   {"ns", DelayUnit::nanoseconds},
      {"nsec", DelayUnit::nanoseconds},  {"ps", DelayUnit::picoseconds},
      {"psec", DelayUnit::picoseconds}};
  return Find<DelayUnit>(kWords, word);
}

std::optional<AngleUnit> AngleUnitOf(std::string_view word) {
  static constexpr Word<AngleUnit> kWords[] = {
      {"deg", AngleUnit::degrees},     {"degree", AngleUnit::degrees},
      {"degrees", AngleUnit::degrees}, {"°", AngleUnit::degrees},
      {"grad", AngleUnit::degrees},    {"rad", AngleUnit::radians},
      {"radian", AngleUnit::radians},  {"radians", AngleUnit::radians}};
  return Find<AngleUnit>(kWords, word);
}

}  // namespace polefit

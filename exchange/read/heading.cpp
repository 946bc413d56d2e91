#include "exchange/read/heading.h"

#include <algorithm>
#include <span>
#include <string>
#include <vector>

#include "base/text.h"
#include "exchange/read/decoding.h"

namespace polefit {

namespace {

using Tokens = std::vector<std::string>;

bool IsWordCharacter(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || byte >= 0x80;
}

/// The words of a heading in lower case; everything that is no letter and no digit parts them.
Tokens TokensOf(std::string_view heading) {
  Tokens tokens(1);
  for (const char c : LowerCase(heading)) {
    if (IsWordCharacter(c)) {
      tokens.back() += c;
    } else if (!tokens.back().empty()) {
      tokens.emplace_back();
    }
  }
  if (tokens.back().empty()) tokens.pop_back();
  return tokens;
}

bool HasOne(const Tokens& tokens, std::span<const std::string_view> words) {
  return std::any_of(tokens.begin(), tokens.end(), [&](const std::string& token) {
    return std::find(words.begin(), words.end(), token) != words.end();
  });
}

/// What stands in the last brackets, or behind the last "/", "_", "in" or blank: where units stand.
std::string_view UnitPart(std::string_view heading) {
  heading = TrimWhite(heading);
  if (heading.ends_with(')') || heading.ends_with(']')) {
    const std::size_t open = heading.find_last_of("([");
    if (open == std::string_view::npos) return {};
    return TrimWhite(heading.substr(open + 1, heading.size() - open - 2));
  }
  const std::size_t cut = heading.find_last_of("/_ \t");
  return cut == std::string_view::npos ? std::string_view() : heading.substr(cut + 1);
}

/// The unit of frequency anywhere in the heading, in a word of its own or at the end of one that
/// begins like "frequency" ("freqMHz").
std::optional<FrequencyUnit> FindFrequencyUnit(const Tokens& tokens) {
  for (const std::string& token : tokens) {
    if (const auto unit = FrequencyUnitOf(token)) return unit;
    if (!token.starts_with('f') || !token.ends_with("hz")) continue;
    const auto unit = FrequencyUnitOf(std::string_view(token).substr(token.size() - 3));
    return unit ? unit : FrequencyUnit::hertz;
  }
  return std::nullopt;
}

/// "dB", "dBm", "S21dB", "vdb": no other word begins or ends so.
bool HasDecibelUnit(const Tokens& tokens) {
  return std::any_of(tokens.begin(), tokens.end(), [](const std::string& token) {
    return token.starts_with("db") || token.ends_with("db") || token.starts_with("dezibel") ||
           token.starts_with("decibel");
  });
}

bool SaysLogarithm(const Tokens& tokens) {
  static constexpr std::string_view kWords[] = {"logmag", "log10", "mlog", "log"};
  return HasOne(tokens, kWords) ||
         std::any_of(tokens.begin(), tokens.end(),
                     [](const std::string& token) { return token.starts_with("20log"); });
}

bool SaysFrequency(const Tokens& tokens) {
  static constexpr std::string_view kWords[] = {
      "freq",       "frequency",  "frequencies", "frequenz", "frequence", "fréquence",
      "frecuencia", "frequencia", "frequenza",   "stimulus", "frequentie"};
  if (HasOne(tokens, kWords)) return true;
  // "f" elsewhere is what a value depends on: "|H(f)|".
  return !tokens.empty() && (tokens.front() == "f" || tokens.front().starts_with("freq"));
}

Quantity QuantityOf(const Tokens& tokens, std::string_view heading) {
  static constexpr std::string_view kReal[] = {"re", "real", "realteil", "vr"};
  static constexpr std::string_view kImaginary[] = {"im",           "imag",          "imaginary",
                                                    "imaginärteil", "imaginaerteil", "vi"};
  static constexpr std::string_view kDelay[] = {"delay", "gd",  "groupdelay", "laufzeit",
                                                "tau",   "tg",  "tpd",        "gruppenlaufzeit",
                                                "tx",    "grd", "delays",     "gdelay"};
  static constexpr std::string_view kAngle[] = {"phase", "ang",    "angle",   "arg",    "deg",
                                                "°",     "cang",   "degrees", "degree", "rad",
                                                "vp",    "uphase", "winkel",  "phas",   "ph"};
  static constexpr std::string_view kWeight[] = {"weight", "weights", "gewicht", "weighting"};
  static constexpr std::string_view kLinear[] = {
      "lin",    "linear", "linmag", "mag",   "magnitude",   "abs", "amplitude",
      "betrag", "ratio",  "volt",   "volts", "v",           "mv",  "vm",
      "yin",    "yout",   "uv",     "h",     "linmagnitude"};
  static constexpr std::string_view kIndex[] = {"index", "no", "nr",  "n",     "point", "pt",
                                                "row",   "#",  "num", "punkt", "number"};
  const bool isDecibel = HasDecibelUnit(tokens);
  // "Frequency response (dB)" is none.
  if (!isDecibel && SaysFrequency(tokens)) return Quantity::frequency;
  if (HasOne(tokens, kReal)) return Quantity::real;
  if (HasOne(tokens, kImaginary)) return Quantity::imaginary;
  if (HasOne(tokens, kDelay)) return Quantity::delay;
  if (isDecibel || SaysLogarithm(tokens)) return Quantity::decibel;
  if (HasOne(tokens, kAngle)) return Quantity::angle;
  if (HasOne(tokens, kWeight)) return Quantity::weight;
  if (HasOne(tokens, kLinear) || heading.find('|') != std::string_view::npos) {
    return Quantity::linear;
  }
  if (FindFrequencyUnit(tokens)) return Quantity::frequency;
  if (HasOne(tokens, kIndex) || heading == "#") return Quantity::index;
  return Quantity::unknown;
}

}  // namespace

Meaning MeaningOf(std::string_view heading) {
  const Tokens tokens = TokensOf(heading);
  Meaning meaning;
  meaning.quantity = QuantityOf(tokens, TrimWhite(heading));
  if (meaning.quantity == Quantity::frequency) meaning.frequencyUnit = FindFrequencyUnit(tokens);
  if (meaning.quantity == Quantity::delay) meaning.delayUnit = DelayUnitOf(UnitPart(heading));
  if (meaning.quantity == Quantity::angle) {
    for (const std::string& token : tokens) {
      if (const auto unit = AngleUnitOf(token)) meaning.angleUnit = unit;
    }
  }
  return meaning;
}

bool IsUnit(std::string_view cell) {
  cell = TrimWhite(cell);
  const bool inBrackets = (cell.starts_with('(') && cell.ends_with(')')) ||
                          (cell.starts_with('[') && cell.ends_with(']'));
  const std::string_view word = inBrackets ? cell.substr(1, cell.size() - 2) : cell;
  static constexpr std::string_view kOthers[] = {"db", "dbm", "lin", "v", "mv", "1",
                                                 "u",  "mag", "-",   "%", "w",  "ohm"};
  const std::string lower = LowerCase(word);
  return FrequencyUnitOf(word) || DelayUnitOf(word) || AngleUnitOf(word) ||
         std::find(std::begin(kOthers), std::end(kOthers), lower) != std::end(kOthers);
}

std::string BareName(std::string_view heading) {
  std::string name;
  for (const char c : LowerCase(heading)) {
    if (IsWordCharacter(c)) name += c;
  }
  return name;
}

}  // namespace polefit

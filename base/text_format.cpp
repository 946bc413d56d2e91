#include "base/text_format.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdarg>
#include <cstdio>

#include "base/text.h"

namespace polefit {

namespace {

/// Drops the zeros that say nothing: before the point, and behind the last other digit.
std::string Trimmed(std::string text) {
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
  }
  const std::size_t digits = text.starts_with('-') ? 1 : 0;
  if (text.compare(digits, 2, "0.") == 0) text.erase(digits, 1);
  return text == "-0" ? "0" : text;
}

}  // namespace

std::string Format(const char* format, ...) {
  std::array<char, 400> buffer{};
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
  va_end(arguments);
  return buffer.data();
}

int DecimalExponent(double value, int digits) {
  if (value == 0 || !std::isfinite(value)) return 0;
  std::array<char, 40> buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                          std::chars_format::scientific, digits - 1);
  const std::string text(buffer.data(), end);
  int exponent = 0;
  const std::size_t begin = text.find('e') + (text[text.find('e') + 1] == '+' ? 2 : 1);
  std::from_chars(text.data() + begin, text.data() + text.size(), exponent);
  return exponent;
}

std::string Rounded(double value, int digits) {
  const int exponent = DecimalExponent(value, digits);
  if (exponent < -4 || exponent >= 9) return Format("%.*e", digits - 1, value);
  return Format("%.*f", std::max(0, digits - 1 - exponent), value);
}

std::string Fitted(double value, int digits, int width) {
  std::string text = Format("%.*g", digits, value);
  while (text.size() > static_cast<std::size_t>(width) && digits > 1) {
    text = Format("%.*g", --digits, value);
  }
  return text;
}

std::string PlainNumber(double value) {
  constexpr int kDigits = 9;
  if (value == 0) return "0";
  const int decimals = std::max(0, kDigits - 1 - DecimalExponent(value, kDigits));
  std::array<char, 700> buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                          std::chars_format::fixed, decimals);
  return Trimmed(std::string(buffer.data(), end));
}

std::string ExactNumber(double value) {
  std::array<char, 700> buffer{};
  const auto [end, error] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
  return Trimmed(std::string(buffer.data(), end));
}

std::string ShortestNumber(double value) {
  std::array<char, 40> buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return {buffer.data(), end};
}

std::string Padded(std::string_view text, std::size_t width) {
  const std::size_t length = CharacterCount(text);
  return std::string(text) + std::string(length < width ? width - length : 0, ' ');
}

std::string OneLineCaption(std::string_view caption) {
  std::string line;
  for (const char c : caption) {
    const bool isRepeated = (c == ' ' || c == '&') && line.ends_with(c);
    if (!isRepeated) line += c;
  }
  return line;
}

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return upper;
}

}  // namespace polefit

#include "exchange/read/number_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "base/number.h"

namespace polefit {

namespace {

/// A longer text is taken for no number, so that no line can take long.
constexpr std::size_t kLongestNumber = 64;
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr std::string_view kTypographicMinus = "\xE2\x88\x92";

/// A number in its parts: sign, digits before and behind the point, power of ten.
struct Parts {
  bool negative = false;
  std::string whole;
  std::string fraction;
  int exponent = 0;
};

Parts PartsOf(std::string_view number) {
  Parts parts;
  if (number.starts_with('+') || number.starts_with('-')) {
    parts.negative = number.front() == '-';
    number.remove_prefix(1);
  }
  const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
  const std::size_t point = std::min(number.find('.'), mark);
  parts.whole = number.substr(0, point);
  if (point < mark) parts.fraction = number.substr(point + 1, mark - point - 1);
  if (mark < number.size()) {
    std::string_view exponent = number.substr(mark + 1);
    if (exponent.starts_with('+')) exponent.remove_prefix(1);
    std::from_chars(exponent.data(), exponent.data() + exponent.size(), parts.exponent);
  }
  return parts;
}

/// Digits with the point behind the first `before` of them, without zeros that say nothing.
std::string PutPoint(std::string digits, long before) {
  if (before <= 0) {
    digits.insert(0, static_cast<std::size_t>(1 - before), '0');
    before = 1;
  }
  const auto point = static_cast<std::size_t>(before);
  if (digits.size() < point) digits.resize(point, '0');
  std::string fraction = digits.substr(point);
  fraction.erase(fraction.find_last_not_of('0') + 1);
  std::string whole = digits.substr(0, point);
  whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size() - 1));
  return fraction.empty() ? whole : whole + "." + fraction;
}

double PlainNumberOf(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  // from_chars would take a second sign, "inf" and "nan".
  if (text.empty() || (!IsDigit(text.back()) && text.back() != '.')) return kNoNumber;
  if (!IsDigit(text.front()) && text.front() != '-' && text.front() != '.') return kNoNumber;
  double number = 0;
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number);
  const bool whole = result.ec == std::errc() && result.ptr == end && std::isfinite(number);
  return whole ? number : kNoNumber;
}

}  // namespace

double CellNumber(std::string_view cell, char decimalMark) {
  if (cell.empty() || cell.size() > kLongestNumber) return kNoNumber;
  if (cell.starts_with("+-")) return kNoNumber;
  std::array<char, kLongestNumber> buffer{};
  if (cell.starts_with(kTypographicMinus)) {
    buffer[0] = '-';
    cell.remove_prefix(kTypographicMinus.size());
  }
  std::size_t length = buffer[0] == '-' ? 1 : 0;
  for (const char c : cell) {
    char plain = c == decimalMark ? '.' : c;
    if (c == '.' && decimalMark != '.') return kNoNumber;
    if (c == 'd' || c == 'D') plain = 'E';
    buffer.at(length++) = plain;
  }
  return PlainNumberOf(std::string_view(buffer.data(), length));
}

std::string NumberText(std::string_view cell, char decimalMark) {
  std::string text;
  if (cell.starts_with(kTypographicMinus)) {
    text = "-";
    cell.remove_prefix(kTypographicMinus.size());
  }
  for (const char c : cell) {
    if (c == decimalMark) {
      text += '.';
    } else {
      text += c == 'd' || c == 'D' ? 'E' : c;
    }
  }
  return text;
}

std::string MovePoint(std::string_view number, int places) {
  if (places == 0) return std::string(number);
  const Parts parts = PartsOf(number);
  const std::string moved =
      PutPoint(parts.whole + parts.fraction,
               static_cast<long>(parts.whole.size()) + parts.exponent + places);
  return parts.negative && moved != "0" ? "-" + moved : moved;
}

}  // namespace polefit

#include "base/number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "base/run_time_error.h"

namespace polefit {

namespace {

/// Collects the characters of a number, one after the other, blanks passed over.
class NumberScanner {
 public:
  explicit NumberScanner(std::string_view text) {
    for (const char c : text) {
      if (c != ' ') rest_ += c;
    }
  }

  /// The longest beginning that is a number, with an exponent only when it has digits.
  std::string_view Scan() {
    TakeSign();
    TakeDigits();
    if (Is('.')) {
      ++at_;
      TakeDigits();
    }
    const std::size_t mantissaEnd = at_;
    if (Is('e') || Is('E')) {
      ++at_;
      TakeSign();
      const std::size_t exponentStart = at_;
      TakeDigits();
      if (at_ == exponentStart) at_ = mantissaEnd;
    }
    return std::string_view(rest_).substr(0, at_);
  }

 private:
  bool Is(char c) const { return at_ < rest_.size() && rest_[at_] == c; }
  void TakeSign() {
    if (Is('+') || Is('-')) ++at_;
  }
  void TakeDigits() {
    while (at_ < rest_.size() && IsDigit(rest_[at_])) ++at_;
  }

  std::string rest_;
  std::size_t at_ = 0;
};

/// The sign and digits behind "e", as far as they fit; 0 when there are none.
long ExponentOf(std::string_view number) {
  const std::size_t mark = number.find_first_of("eE");
  if (mark == std::string_view::npos) return 0;
  const bool negative = number.substr(mark + 1, 1) == "-";
  number.remove_prefix(number.find_first_of("0123456789", mark));
  long exponent = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), exponent);
  if (result.ec != std::errc()) exponent = std::numeric_limits<int>::max();
  return negative ? -exponent : exponent;
}

/// True when a number that does not fit a double is too small for it, not too large: its first
/// digit other than 0 stands behind the decimal point once the exponent has moved that.
bool IsUnderflow(std::string_view number) {
  const std::string_view mantissa = number.substr(0, number.find_first_of("eE"));
  const auto point = static_cast<long>(std::min(mantissa.find('.'), mantissa.size()));
  const auto digit = static_cast<long>(mantissa.find_first_of("123456789"));
  return point - digit + ExponentOf(number) < 0;
}

}  // namespace

double ReadNumber(std::string_view text) {
  NumberScanner scanner(text);
  std::string_view number = scanner.Scan();
  if (!number.empty() && number.front() == '+') number.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
  if (error == std::errc::result_out_of_range) {
    if (IsUnderflow(number)) return 0;
    throw MakeRunTimeError(error_number::kOverflow);
  }
  return error == std::errc() ? value : 0;
}

std::int16_t ToInteger16(double number) {
  const double whole = std::nearbyint(number);
  const bool fits = whole >= std::numeric_limits<std::int16_t>::min() &&
                    whole <= std::numeric_limits<std::int16_t>::max();
  if (!fits) throw MakeRunTimeError(error_number::kOverflow);
  return static_cast<std::int16_t>(whole);
}

std::string SignedText(long number) {
  return (number < 0 ? "" : " ") + std::to_string(number);
}

std::string ShortestText(float number) {
  std::array<char, 48> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
  return {buffer.data(), result.ptr};
}

}  // namespace polefit

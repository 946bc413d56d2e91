#pragma once

#include <string>

namespace polefit {

/// printf into a string, in the C locale's number format.
[[gnu::format(printf, 1, 2)]] std::string Format(const char* format, ...);

/// A number with 9 significant digits, a decimal point, no exponent, no leading or trailing zero:
/// ".452756898", "4", "-12.5".
std::string PlainNumber(double value);

/// The shortest such text that reads back as the same number.
std::string ExactNumber(double value);

}  // namespace polefit

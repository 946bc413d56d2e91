#pragma once

#include <string>
#include <string_view>

namespace polefit {

/// printf into a string, in the C locale's number format.
[[gnu::format(printf, 1, 2)]] std::string Format(const char* format, ...);

/// The power of ten of the first digit, once the number is rounded to `digits` significant digits.
int DecimalExponent(double value, int digits);

/// A number with `digits` significant digits, whole below 1e9: "181.64", "0.0024470", "1816409",
/// "1.8164e+12".
std::string Rounded(double value, int digits);

/// The shortest text of `digits` significant digits, or of as many as fit in `width` characters.
std::string Fitted(double value, int digits, int width);

/// A number with 9 significant digits, a decimal point, no exponent, no leading or trailing zero:
/// ".452756898", "4", "-12.5".
std::string PlainNumber(double value);

/// The shortest such text that reads back as the same number.
std::string ExactNumber(double value);

/// The shortest text that reads back as the same number, with an exponent where that is shorter:
/// "0.5", "6.283185307179586e+07".
std::string ShortestNumber(double value);

/// A text padded with blanks to `width` characters.
std::string Padded(std::string_view text, std::size_t width);

/// A label's caption on one line of text: runs of blanks are one blank, "&&" is "&".
std::string OneLineCaption(std::string_view caption);

/// ASCII letters as capitals.
std::string UpperCase(std::string_view text);

}  // namespace polefit

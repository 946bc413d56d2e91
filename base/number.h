#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace polefit {

constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// The number that a text begins with, 0 when it begins with none: leading blanks are skipped,
/// blanks between digits are ignored, and reading stops at the first character that cannot
/// continue a number. The decimal sign is a point whatever the locale. Error 6 when the number
/// is too large for a double.
double ReadNumber(std::string_view text);

/// `number` as a 16-bit integer, halves to the even neighbour. Error 6 when it does not fit.
std::int16_t ToInteger16(double number);

/// The number in decimal, with a blank in place of the sign when it is not negative: " 12".
std::string SignedText(long number);

/// The shortest text that reads back as the same single-precision number: "1", "0.5".
std::string ShortestText(float number);

}  // namespace polefit

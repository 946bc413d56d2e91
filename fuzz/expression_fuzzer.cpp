// Bytes in, as an expression: it is one and has a value, or it is none and says where.

#include <array>
#include <cstdlib>
#include <string_view>

#include "base/expression.h"
#include "base/text.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace polefit;
  constexpr std::array<std::string_view, 3> kVariables = {"f", "x", "yin"};
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  try {
    const Expression expression(text, kVariables);
    // The same every time, a value that is not finite counted as one.
    const double value = expression.At(std::array{2.5, .25, -1.0});
    const double again = expression.At(std::array{2.5, .25, -1.0});
    if (value == value && value != again) std::abort();
  } catch (const ExpressionError& error) {
    if (error.place < 1 || error.place > CharacterCount(text) + 1) std::abort();
  }
  return 0;
}

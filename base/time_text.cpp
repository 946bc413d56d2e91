#include "base/time_text.h"

#include <array>
#include <ctime>

namespace polefit {

std::string ShortTime(std::int64_t seconds) {
  const std::time_t time = seconds;
  std::tm local{};
  ::localtime_r(&time, &local);
  std::array<char, 64> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), "%-d %b %H:%M", &local);
  return {text.data(), length};
}

}  // namespace polefit

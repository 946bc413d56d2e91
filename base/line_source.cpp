#include "base/line_source.h"

#include <algorithm>

#include "base/run_time_error.h"
#include "base/text.h"

namespace polefit {

std::string_view ByteLines::ReadLine() {
  if (rest_.empty()) throw MakeRunTimeError(error_number::kInputPastEndOfFile);
  const std::size_t length = std::min(rest_.find('\n'), rest_.size() - 1) + 1;
  const std::string_view line = WithoutLineEnd(rest_.substr(0, length));
  rest_.remove_prefix(length);
  return FromWindows1252(line, line_);
}

std::string_view WithoutLineEnd(std::string_view line) {
  if (!line.ends_with('\n')) return line;
  line.remove_suffix(1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace polefit

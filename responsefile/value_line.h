#pragma once

#include <string>
#include <string_view>

#include "base/line_source.h"

namespace polefit {

/// The value part of a line: what stands before the first "!", blanks trimmed at both ends, then
/// tabs removed. A value that begins with "-999" is empty.
std::string ValueOfLine(std::string_view line);

/// The value part of the next line; error 62 after the last line.
std::string ReadValueLine(LineSource& lines);

/// A grid row made ready for splitting: commas are blanks, no blank at the ends, none doubled.
std::string NormalizeList(std::string text);

}  // namespace polefit

#pragma once

#include <string>
#include <string_view>

namespace polefit {

/// A text on one line: a file's name may hold a line break, which a record's lines may not.
std::string EscapedLine(std::string_view text);
std::string UnescapedLine(std::string_view line);

}  // namespace polefit

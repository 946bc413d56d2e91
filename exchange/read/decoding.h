#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace polefit {

/// The bytes of a text file as UTF-8: UTF-8 and UTF-16 by their mark, without a mark UTF-8 where
/// the bytes are, else Windows-1252. Nothing when the bytes are no text.
std::optional<std::string> DecodedText(std::string_view bytes);

/// The lines of a text without their ends, which are CR, LF or CR LF, each line its own way.
std::vector<std::string_view> LinesOf(std::string_view text);

/// The text without blanks and tabs at both ends.
std::string_view TrimWhite(std::string_view text);

/// The words of a line, separated by blanks and tabs.
std::vector<std::string_view> WordsOf(std::string_view line);

}  // namespace polefit

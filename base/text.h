#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace polefit {

/// Windows-1252 bytes as UTF-8. Each of the 256 bytes has its own character; the five that the
/// code page leaves undefined are the control characters of the same number.
std::string FromWindows1252(std::string_view bytes);
/// The same without a copy where none is needed: a view of `bytes` or of `buffer`.
std::string_view FromWindows1252(std::string_view bytes, std::string& buffer);

/// Appends a character as UTF-8.
void AppendUtf8(char32_t codePoint, std::string& utf8);

/// UTF-8 text as Windows-1252. A character that the code page lacks, or a byte that is no UTF-8,
/// becomes "?".
std::string ToWindows1252(std::string_view utf8);
/// The same without a copy where none is needed: a view of `utf8` or of `buffer`. Adds the number
/// of characters that became "?" to `replaced`.
std::string_view ToWindows1252(std::string_view utf8, std::string& buffer, int& replaced);

/// False when a byte of it belongs to no character.
bool IsUtf8(std::string_view text);

/// Whether the text has one of the characters below the blank, or the one of number 127.
bool HasControlCharacters(std::string_view text);
/// The text as a terminal may show it: line ends stay, other control characters and bytes that are
/// no UTF-8 stand as codes ("\\x1b").
std::string Printable(std::string_view text);

/// The first `count` characters of a UTF-8 text, all of it when it is shorter.
std::string_view FirstCharacters(std::string_view utf8, std::size_t count);

/// How many characters a UTF-8 text has.
std::size_t CharacterCount(std::string_view utf8);

/// The text without blanks at both ends. Tabs are not blanks.
std::string_view TrimBlanks(std::string_view text);

/// The text in lower case, as the Windows-1252 letters go.
std::string LowerCase(std::string_view utf8);

}  // namespace polefit

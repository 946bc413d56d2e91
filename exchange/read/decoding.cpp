#include "exchange/read/decoding.h"

#include <algorithm>

#include "base/text.h"

namespace polefit {

namespace {

using Byte = unsigned char;

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";
constexpr std::string_view kWhite = " \t";

/// UTF-16 without its mark; a lone surrogate is a question mark, an odd last byte is left out.
std::string FromUtf16(std::string_view bytes, bool bigEndian) {
  const auto unit = [&](std::size_t at) {
    const auto first = static_cast<Byte>(bytes[at]);
    const auto second = static_cast<Byte>(bytes[at + 1]);
    return static_cast<char32_t>(bigEndian ? first << 8U | second : second << 8U | first);
  };
  std::string utf8;
  utf8.reserve(bytes.size() / 2);
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    char32_t c = unit(at);
    if (c >= 0xD800 && c < 0xDC00 && at + 3 < bytes.size()) {
      const char32_t low = unit(at + 2);
      if (low >= 0xDC00 && low < 0xE000) {
        c = 0x10000 + ((c - 0xD800) << 10U) + (low - 0xDC00);
        at += 2;
      }
    }
    AppendUtf8(c >= 0xD800 && c < 0xE000 ? U'?' : c, utf8);
  }
  return utf8;
}

/// A text has line ends, tabs and form feeds, and the end mark of old systems, but no other
/// control characters.
bool IsText(std::string_view utf8) {
  return std::all_of(utf8.begin(), utf8.end(), [](char c) {
    return static_cast<Byte>(c) >= ' ' || (c >= '\t' && c <= '\r') || c == '\x1A';
  });
}

}  // namespace

std::optional<std::string> DecodedText(std::string_view bytes) {
  std::string text;
  if (bytes.starts_with(kUtf8Mark)) {
    text = bytes.substr(kUtf8Mark.size());
  } else if (bytes.starts_with(kLittleEndianMark) || bytes.starts_with(kBigEndianMark)) {
    text = FromUtf16(bytes.substr(2), bytes.starts_with(kBigEndianMark));
  } else if (IsUtf8(bytes)) {
    text = bytes;
  } else {
    text = FromWindows1252(bytes);
  }
  if (!IsText(text)) return std::nullopt;
  return text;
}

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    lines.push_back(text.substr(0, end));
    const std::size_t mark = text.substr(end).starts_with("\r\n") ? 2 : 1;
    text.remove_prefix(std::min(text.size(), end + mark));
  }
  return lines;
}

std::string_view TrimWhite(std::string_view text) {
  const std::size_t begin = std::min(text.find_first_not_of(kWhite), text.size());
  text.remove_prefix(begin);
  return text.substr(0, text.find_last_not_of(kWhite) + 1);
}

std::vector<std::string_view> WordsOf(std::string_view line) {
  std::vector<std::string_view> words;
  for (line = TrimWhite(line); !line.empty(); line = TrimWhite(line)) {
    const std::size_t end = std::min(line.find_first_of(kWhite), line.size());
    words.push_back(line.substr(0, end));
    line.remove_prefix(end);
  }
  return words;
}

}  // namespace polefit

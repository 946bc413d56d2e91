#include "base/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

namespace polefit {

namespace {

using Byte = unsigned char;

/// What the bytes 80 to 9F stand for.
constexpr std::array<char16_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char32_t kNoCharacter = 0xFFFFFFFF;

char32_t CodePointOf(Byte byte) {
  return byte >= 0x80 && byte < 0xA0 ? kHighControls[byte - 0x80U] : byte;
}

bool IsContinuation(char byte) {
  return (static_cast<Byte>(byte) & 0xC0) == 0x80;
}

/// How many bytes a character takes that begins with `first`; 0 when none begins so.
std::size_t SequenceLength(Byte first) {
  if (first < 0x80) return 1;
  if (first < 0xC2) return 0;
  if (first < 0xE0) return 2;
  if (first < 0xF0) return 3;
  return first < 0xF5 ? 4 : 0;
}

/// Takes the first character off `utf8`; kNoCharacter for a byte that begins none.
char32_t TakeCodePoint(std::string_view& utf8) {
  static constexpr std::array<Byte, 5> kFirstBits = {0, 0x7F, 0x1F, 0x0F, 0x07};
  static constexpr std::array<char32_t, 5> kFirstOfLength = {0, 0, 0x80, 0x800, 0x10000};
  const auto first = static_cast<Byte>(utf8.front());
  const std::size_t length = SequenceLength(first);
  const bool whole =
      length > 0 && length <= utf8.size() &&
      std::all_of(utf8.begin() + 1, utf8.begin() + static_cast<std::ptrdiff_t>(length),
                  IsContinuation);
  if (!whole) {
    utf8.remove_prefix(1);
    return kNoCharacter;
  }
  char32_t codePoint = first & kFirstBits[length];
  for (std::size_t i = 1; i < length; ++i) {
    codePoint = (codePoint << 6) | (static_cast<Byte>(utf8[i]) & 0x3FU);
  }
  // An overlong form would hide a character behind other bytes.
  const bool shortest = codePoint >= kFirstOfLength[length];
  utf8.remove_prefix(shortest ? length : 1);
  return shortest ? codePoint : kNoCharacter;
}

/// The byte for a code point, or -1 when the code page has none.
int ByteOf(char32_t codePoint) {
  if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint < 0x100)) {
    return static_cast<int>(codePoint);
  }
  const auto* found = std::find(kHighControls.begin(), kHighControls.end(), codePoint);
  return found == kHighControls.end() ? -1
                                      : static_cast<int>(0x80 + (found - kHighControls.begin()));
}

/// Looks at every byte, without an early end, so that the compiler can take many at a time.
bool IsAscii(std::string_view text) {
  Byte bits = 0;
  for (const char c : text) bits = static_cast<Byte>(bits | static_cast<Byte>(c));
  return bits < 0x80;
}

/// How many characters from the front on are plain ASCII.
std::size_t LengthOfAscii(std::string_view text) {
  const auto* end =
      std::find_if(text.begin(), text.end(), [](char c) { return static_cast<Byte>(c) >= 0x80; });
  return static_cast<std::size_t>(end - text.begin());
}

bool IsControl(char c) {
  return (c >= 0 && c < ' ') || c == '\x7F';
}

/// "\x1b"
std::string CodeOf(char byte) {
  std::array<char, 8> code{};
  std::snprintf(code.data(), code.size(), "\\x%02x",
                static_cast<unsigned>(static_cast<Byte>(byte)));
  return code.data();
}

}  // namespace

void AppendUtf8(char32_t codePoint, std::string& utf8) {
  if (codePoint < 0x80) {
    utf8 += static_cast<char>(codePoint);
  } else if (codePoint < 0x800) {
    utf8 += static_cast<char>(0xC0 | (codePoint >> 6));
    utf8 += static_cast<char>(0x80 | (codePoint & 0x3F));
  } else {
    if (codePoint < 0x10000) {
      utf8 += static_cast<char>(0xE0 | (codePoint >> 12));
    } else {
      utf8 += static_cast<char>(0xF0 | (codePoint >> 18));
      utf8 += static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
    }
    utf8 += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
    utf8 += static_cast<char>(0x80 | (codePoint & 0x3F));
  }
}

std::string_view FromWindows1252(std::string_view bytes, std::string& buffer) {
  if (IsAscii(bytes)) return bytes;
  buffer.clear();
  for (const char byte : bytes) AppendUtf8(CodePointOf(static_cast<Byte>(byte)), buffer);
  return buffer;
}

std::string FromWindows1252(std::string_view bytes) {
  std::string buffer;
  return std::string(FromWindows1252(bytes, buffer));
}

std::string_view ToWindows1252(std::string_view utf8, std::string& buffer, int& replaced) {
  if (IsAscii(utf8)) return utf8;
  buffer.clear();
  while (!utf8.empty()) {
    const std::size_t plain = LengthOfAscii(utf8);
    buffer += utf8.substr(0, plain);
    utf8.remove_prefix(plain);
    if (utf8.empty()) break;
    const int byte = ByteOf(TakeCodePoint(utf8));
    buffer += byte < 0 ? '?' : static_cast<char>(byte);
    replaced += byte < 0 ? 1 : 0;
  }
  return buffer;
}

std::string ToWindows1252(std::string_view utf8) {
  std::string buffer;
  int replaced = 0;
  return std::string(ToWindows1252(utf8, buffer, replaced));
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    if (TakeCodePoint(text) == kNoCharacter) return false;
  }
  return true;
}

bool HasControlCharacters(std::string_view text) {
  return std::any_of(text.begin(), text.end(), IsControl);
}

std::string Printable(std::string_view text) {
  std::string shown;
  while (!text.empty()) {
    const std::string_view before = text;
    const char32_t codePoint = TakeCodePoint(text);
    const std::string_view character = before.substr(0, before.size() - text.size());
    const bool isHighControl = codePoint >= 0x80 && codePoint < 0xA0;
    const bool isControlCode = IsControl(character.front()) && codePoint != '\n';
    if (codePoint == kNoCharacter || isHighControl || isControlCode) {
      shown += CodeOf(character.back());
    } else {
      shown += character;
    }
  }
  return shown;
}

std::string_view FirstCharacters(std::string_view utf8, std::size_t count) {
  std::string_view rest = utf8;
  for (std::size_t i = 0; i < count && !rest.empty(); ++i) TakeCodePoint(rest);
  return utf8.substr(0, utf8.size() - rest.size());
}

std::size_t CharacterCount(std::string_view utf8) {
  std::size_t count = 0;
  for (; !utf8.empty(); ++count) TakeCodePoint(utf8);
  return count;
}

std::string_view TrimBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string LowerCase(std::string_view utf8) {
  std::string lower;
  while (!utf8.empty()) {
    const std::string_view before = utf8;
    const char32_t codePoint = TakeCodePoint(utf8);
    const bool latin1 = codePoint >= 0xC0 && codePoint <= 0xDE && codePoint != 0xD7;
    const bool ascii = codePoint >= 'A' && codePoint <= 'Z';
    if (ascii || latin1) {
      AppendUtf8(codePoint + 0x20, lower);
    } else if (codePoint == 0x160 || codePoint == 0x152 || codePoint == 0x17D) {
      AppendUtf8(codePoint + 1, lower);
    } else if (codePoint == 0x178) {
      AppendUtf8(0xFF, lower);
    } else {
      lower += before.substr(0, before.size() - utf8.size());
    }
  }
  return lower;
}

}  // namespace polefit

#include "base/rich_text.h"

#include <cctype>
#include <cstdlib>
#include <vector>

#include "base/text.h"

namespace polefit {

namespace {

struct SpecialWord {
  std::string_view word;
  std::string_view text;
};

constexpr SpecialWord kSpecialWords[] = {
    {"par", "\n"},   {"line", "\n"},  {"sect", "\n"},     {"page", "\n"},     {"row", "\n"},
    {"tab", "\t"},   {"cell", "\t"},  {"bullet", "•"},    {"endash", "–"},    {"emdash", "—"},
    {"lquote", "‘"}, {"rquote", "’"}, {"ldblquote", "“"}, {"rdblquote", "”"},
};

/// Groups whose content is no text of the document.
constexpr std::string_view kSilentGroups[] = {"fonttbl", "colortbl", "stylesheet", "info",
                                              "pict",    "header",   "footer",     "listtable"};

class RtfReader {
 public:
  explicit RtfReader(std::string_view rtf) : rest_(rtf) {}

  std::string Read() {
    while (!rest_.empty()) Step();
    return text_;
  }

 private:
  struct Group {
    bool silent = false;
    /// How many characters stand behind a Unicode character for readers that know none.
    int fallbackLength = 1;
  };

  char Take() {
    const char c = rest_.front();
    rest_.remove_prefix(1);
    return c;
  }

  void Step() {
    switch (const char c = Take()) {
      case '{':
        groups_.push_back(groups_.back());
        break;
      case '}':
        if (groups_.size() > 1) groups_.pop_back();
        break;
      case '\\':
        if (!rest_.empty()) ReadControl();
        break;
      case '\r':
      case '\n':
        break;
      default:
        Byte(c);
    }
  }

  void ReadControl() {
    if (std::isalpha(static_cast<unsigned char>(rest_.front())) != 0) return ReadWord();
    switch (const char c = Take()) {
      case '\'':
        Byte(static_cast<char>(std::strtol(std::string(TakeUpTo(2)).c_str(), nullptr, 16)));
        break;
      case '*':
        groups_.back().silent = true;
        break;
      case '~':
        Byte(' ');
        break;
      case '_':
        Byte('-');
        break;
      case '\n':
      case '\r':
        Append("\n");
        break;
      case '\\':
      case '{':
      case '}':
        Byte(c);
        break;
      default:
        break;
    }
  }

  void ReadWord() {
    std::size_t length = 0;
    const auto at = [&](std::size_t i) { return i < rest_.size() ? rest_[i] : '\0'; };
    while (std::isalpha(static_cast<unsigned char>(at(length))) != 0) ++length;
    const std::string_view word = TakeUpTo(length);
    length = at(0) == '-' ? 1 : 0;
    while (std::isdigit(static_cast<unsigned char>(at(length))) != 0) ++length;
    const int number = std::atoi(std::string(TakeUpTo(length)).c_str());
    if (at(0) == ' ') Take();
    ActOn(word, number);
  }

  void ActOn(std::string_view word, int number) {
    if (word == "u") {
      AppendCodePoint(static_cast<unsigned>(number) & 0xFFFFU);
      skip_ = groups_.back().fallbackLength;
    } else if (word == "uc") {
      groups_.back().fallbackLength = number;
    }
    for (const SpecialWord& special : kSpecialWords) {
      if (special.word == word) Append(special.text);
    }
    for (const std::string_view silent : kSilentGroups) {
      if (silent == word) groups_.back().silent = true;
    }
  }

  std::string_view TakeUpTo(std::size_t count) {
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(taken.size());
    return taken;
  }

  void Byte(char c) {
    if (skip_ > 0) {
      --skip_;
    } else {
      Append(FromWindows1252(std::string_view(&c, 1)));
    }
  }

  void AppendCodePoint(unsigned codePoint) {
    std::string utf8;
    AppendUtf8(codePoint, utf8);
    Append(utf8);
  }

  void Append(std::string_view text) {
    if (!groups_.back().silent) text_ += text;
  }

  std::string_view rest_;
  std::string text_;
  std::vector<Group> groups_ = {Group{}};
  int skip_ = 0;
};

}  // namespace

std::string PlainTextOfRtf(std::string_view rtf) {
  return RtfReader(rtf).Read();
}

}  // namespace polefit

#include "responsefile/value_line.h"

#include "platform/text.h"

namespace polefit {

std::string ValueOfLine(std::string_view line) {
  const std::string_view value = TrimBlanks(line.substr(0, line.find('!')));
  // Kept: whatever goes on after "-999" (-9990, -999.25) is blanked with it.
  if (value.starts_with("-999")) return {};
  std::string text(value);
  std::erase(text, '\t');
  return text;
}

std::string ReadValueLine(Host& host) {
  return ValueOfLine(host.ReadLine());
}

std::string NormalizeList(std::string_view text) {
  std::string list;
  list.reserve(text.size());
  for (const char c : text) {
    const bool blank = c == ' ' || c == ',';
    if (!blank) {
      list += c;
    } else if (!list.empty() && list.back() != ' ') {
      list += ' ';
    }
  }
  if (!list.empty() && list.back() == ' ') list.pop_back();
  return list;
}

}  // namespace polefit

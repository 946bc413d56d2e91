#include "runs/record_line.h"

namespace polefit {

std::string EscapedLine(std::string_view text) {
  std::string line;
  for (const char c : text) {
    if (c == '\n' || c == '\\') line += '\\';
    line += c == '\n' ? 'n' : c;
  }
  return line;
}

std::string UnescapedLine(std::string_view line) {
  std::string text;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const bool isEscape = line[i] == '\\' && i + 1 < line.size();
    if (isEscape) ++i;
    text += isEscape && line[i] == 'n' ? '\n' : line[i];
  }
  return text;
}

}  // namespace polefit

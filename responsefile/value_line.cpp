#include "responsefile/value_line.h"

#include "base/text.h"

namespace polefit {

std::string ValueOfLine(std::string_view line) {
  // Kept: a "!" ends the value wherever it stands, and a tab falls out of it.
  const std::string_view value = TrimBlanks(line.substr(0, line.find('!')));
  // Kept: whatever goes on after "-999" (-9990, -999.25) is blanked with it.
  if (value.starts_with("-999")) return {};
  std::string text(value);
  std::erase(text, '\t');
  return text;
}

std::string ReadValueLine(LineSource& lines) {
  return ValueOfLine(lines.ReadLine());
}

std::string NormalizeList(std::string text) {
  char previous = ' ';
  char* end = text.data();
  for (const char c : text) {
    // Kept: a comma separates as a blank does, so that a decimal comma makes two cells.
    const char next = c == ',' ? ' ' : c;
    if (next != ' ' || previous != ' ') *end++ = next;
    previous = next;
  }
  if (end != text.data() && previous == ' ') --end;
  text.resize(static_cast<std::size_t>(end - text.data()));
  return text;
}

}  // namespace polefit

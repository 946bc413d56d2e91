#include "solver/report_text.h"

#include <algorithm>

#include "platform/text.h"

namespace polefit {

void ReportText::Line(std::string_view text) {
  std::string line(FirstCharacters(text, kColumns));
  line.erase(line.find_last_not_of(' ') + 1);
  lines_.push_back(line);
}

void ReportText::Wrapped(const std::string& text, std::size_t indent) {
  std::string_view rest = text;
  std::string begin;
  while (true) {
    const std::size_t room = kColumns - begin.size();
    std::string_view part = FirstCharacters(rest, room);
    if (part.size() < rest.size()) {
      const std::size_t blank = part.rfind(' ');
      if (blank != std::string_view::npos && blank > 0) part = part.substr(0, blank);
    }
    Line(begin + std::string(part));
    rest.remove_prefix(part.size());
    rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
    if (rest.empty()) return;
    begin = std::string(indent, ' ');
  }
}

void ReportText::Heading(const std::string& title) {
  Line();
  Line(title);
  Line(std::string(kColumns, '-'));
}

std::string Padded(std::string_view text, std::size_t width) {
  std::string padded(text);
  const std::size_t length = CharacterCount(text);
  if (length < width) padded.append(width - length, ' ');
  return padded;
}

}  // namespace polefit

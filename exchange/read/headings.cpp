#include "exchange/read/headings.h"

#include <algorithm>
#include <cmath>

#include "exchange/read/decoding.h"
#include "exchange/read/layout.h"
#include "exchange/read/number_text.h"

namespace polefit {

namespace {

constexpr std::string_view kCommentMarks = "#!%;";
constexpr std::string_view kBracketMarks = "([";
/// So far above the first row headings are looked for.
constexpr std::size_t kHeadingLines = 60;
/// A longer line is no heading.
constexpr std::size_t kLongestHeading = 20'000;

std::string_view WithoutMark(std::string_view line, char separator) {
  line = TrimWhite(line);
  if (IsComment(line, separator)) {
    line.remove_prefix(std::min(line.find_first_not_of("#!%;/ \t"), line.size()));
  }
  return line;
}

/// A cell as a name: without quotes, doubled quotes as one.
std::string NameOfCell(std::string_view cell) {
  cell = TrimWhite(cell);
  if (cell.size() > 1 && cell.starts_with('"') && cell.ends_with('"')) {
    cell = TrimWhite(cell.substr(1, cell.size() - 2));
  }
  std::string name(cell);
  for (std::size_t at = 0; (at = name.find("\"\"", at)) != std::string::npos; ++at) {
    name.erase(at, 1);
  }
  return name;
}

/// Splits at separators outside of round brackets and quotes.
std::vector<std::string> SplitOutsideBrackets(std::string_view line, char separator) {
  std::vector<std::string> cells;
  int depth = 0;
  bool inQuotes = false;
  std::size_t begin = 0;
  for (std::size_t at = 0; at <= line.size(); ++at) {
    const char c = at < line.size() ? line[at] : separator;
    if (c == '"') inQuotes = !inQuotes;
    if (c == '(' && !inQuotes) ++depth;
    if (c == ')' && !inQuotes && depth > 0) --depth;
    const bool ends = at == line.size() || (c == separator && depth == 0 && !inQuotes);
    if (!ends) continue;
    cells.push_back(NameOfCell(line.substr(begin, at - begin)));
    begin = at + 1;
  }
  return cells;
}

/// Splits at tabs and at two or more blanks.
std::vector<std::string> SplitAtGaps(std::string_view line) {
  std::vector<std::string> cells;
  for (line = TrimWhite(line); !line.empty(); line = TrimWhite(line)) {
    const std::size_t end = std::min({line.find("  "), line.find('\t'), line.size()});
    cells.push_back(NameOfCell(line.substr(0, end)));
    line.remove_prefix(end);
  }
  return cells;
}

bool IsInBrackets(std::string_view word) {
  return kBracketMarks.find(word.front()) != std::string_view::npos;
}

/// Splits at blanks; a unit behind a name ("Frequency (GHz)", "f / MHz", "S21 dB") stays with it
/// as long as there are more words than columns, those in brackets before others.
std::vector<std::string> SplitAtBlanks(std::string_view line, std::size_t columns) {
  std::vector<std::string> cells;
  const std::vector<std::string_view> words = WordsOf(line);
  auto surplus = static_cast<std::ptrdiff_t>(words.size()) - static_cast<std::ptrdiff_t>(columns);
  std::ptrdiff_t inBrackets = std::count_if(words.begin(), words.end(), IsInBrackets);
  for (const std::string_view word : words) {
    const bool isBracket = IsInBrackets(word);
    if (isBracket) --inBrackets;
    const bool follows =
        !cells.empty() && (isBracket || IsUnit(word) || word == "/" || word == "in" ||
                           cells.back().ends_with(" /") || cells.back().ends_with(" in"));
    if (follows && surplus > (isBracket ? 0 : inBrackets)) {
      cells.back() += ' ' + std::string(word);
      --surplus;
    } else {
      cells.push_back(NameOfCell(word));
    }
  }
  return cells;
}

void DropEmptyEnd(std::vector<std::string>& cells) {
  while (!cells.empty() && cells.back().empty()) cells.pop_back();
}

bool IsName(const std::string& cell) {
  return std::isnan(CellNumber(cell, '.')) && std::isnan(CellNumber(cell, ','));
}

/// Whether the cells can be headings at all: words, and not one alone.
bool AreNames(const std::vector<std::string>& cells) {
  return cells.size() >= 2 && std::all_of(cells.begin(), cells.end(), IsName);
}

bool AreUnits(const std::vector<std::string>& cells) {
  return std::all_of(cells.begin(), cells.end(),
                     [](const std::string& cell) { return cell.empty() || IsUnit(cell); });
}

void PutUnitsBehind(std::vector<std::string>& names, const std::vector<std::string>& units) {
  for (std::size_t i = 0; i < std::min(names.size(), units.size()); ++i) {
    if (units[i].empty() || units[i] == "-") continue;
    const bool bare = !units[i].starts_with('(') && !units[i].starts_with('[');
    names[i] += bare ? " (" + units[i] + ")" : " " + units[i];
  }
}

}  // namespace

bool NameAFrequency(const std::vector<std::string>& cells) {
  return std::any_of(cells.begin(), cells.end(), [](const std::string& cell) {
    return MeaningOf(cell).quantity == Quantity::frequency;
  });
}

bool IsComment(std::string_view line, char separator) {
  line = TrimWhite(line);
  // Where semicolons part the cells, the first one stands behind an empty cell.
  if (line.empty() || line.front() == separator) return false;
  return kCommentMarks.find(line.front()) != std::string_view::npos || line.starts_with("//");
}

bool IsRuler(std::string_view line) {
  return line.find_first_not_of("-=_+*~| \t") == std::string_view::npos;
}

std::vector<std::string> HeadingCells(std::string_view line, char separator, std::size_t columns) {
  line = WithoutMark(line, separator);
  std::vector<std::vector<std::string>> ways;
  if (separator != ' ') {
    ways.push_back(SplitOutsideBrackets(line, separator));
    std::vector<std::string_view> cells;
    SplitCells(line, separator, cells);
    ways.emplace_back(cells.begin(), cells.end());
  }
  ways.push_back(SplitAtGaps(line));
  for (const char other : {'\t', ';', ',', '|'}) ways.push_back(SplitOutsideBrackets(line, other));
  ways.push_back(SplitAtBlanks(line, columns));
  for (std::vector<std::string>& cells : ways) {
    DropEmptyEnd(cells);
    if (cells.size() == columns) return cells;
  }
  return separator == ' ' ? ways.back() : ways.front();
}

Headings FindHeadings(const std::vector<std::string_view>& lines, std::size_t firstRow,
                      char separator, std::size_t columns) {
  Headings units;
  Headings near;
  std::size_t looked = 0;
  for (std::size_t at = firstRow; at-- > 0 && looked < kHeadingLines;) {
    if (WithoutMark(lines[at], separator).empty() || IsRuler(lines[at])) continue;
    ++looked;
    if (lines[at].size() > kLongestHeading) continue;
    std::vector<std::string> cells = HeadingCells(lines[at], separator, columns);
    if (!AreNames(cells)) continue;
    const std::size_t found = cells.size();
    const bool fits = found == columns;
    const int line = static_cast<int>(at) + 1;
    if (fits && units.line == 0 && AreUnits(cells)) {
      units = {line, cells, found};
      continue;
    }
    if (!fits && !NameAFrequency(cells)) continue;
    cells.resize(columns);
    PutUnitsBehind(cells, units.names);
    if (fits) return {line, cells, found};
    if (near.line == 0) near = {line, cells, found};
  }
  if (near.line == 0) near = units;
  near.names.resize(columns);
  return near;
}

}  // namespace polefit

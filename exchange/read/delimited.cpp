#include "exchange/read/delimited.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "exchange/read/complex_cells.h"
#include "exchange/read/decoding.h"
#include "exchange/read/headings.h"
#include "exchange/read/number_text.h"

namespace polefit {

namespace {

/// No file of ours has longer lines; one without line ends would be one cell after the other.
constexpr std::size_t kLongestTextLine = 1U << 20U;
constexpr std::size_t kMostColumns = 4096;
/// A file with more cells is refused.
constexpr std::size_t kMostCells = 8'000'000;
/// So many lines between rows are looked at for other headings.
constexpr int kMostHeadings = 1000;

using Lines = std::vector<std::string_view>;
using Cells = std::vector<std::string_view>;

/// Lines first to last, indexes, of which the first and the last are rows.
struct Block {
  std::size_t first = 0;
  std::size_t last = 0;
  int rows = 0;
};

class DelimitedReader {
 public:
  DelimitedReader(const Lines& lines, const RowShape& shape) : lines_(lines), shape_(shape) {
    table_.decimalMark = shape.layout.decimalMark;
  }

  SourceTable Read(const TextChoices& choices, TextLayout* found) {
    const Block block = LargestBlock();
    TakeHeadings(block, choices);
    table_.Reserve(static_cast<std::size_t>(block.rows));
    TakeTornBegin(block);
    for (std::size_t i = block.first; i <= block.last; ++i) TakeLine(i);
    TakeTornEnd(block);
    const bool agree = headings_.found == 0 || headings_.found == shape_.cells;
    if (found != nullptr) *found = {shape_.layout, headings_.line, agree};
    if (headings_.found * 2 == shape_.cells && shape_.layout == Layout{',', '.'}) {
      return NoTable(
          "commas part the columns and stand in the numbers too: the two cannot be told apart");
    }
    return std::move(table_);
  }

 private:
  bool IsRow(std::size_t index) {
    SplitCells(WithoutComment(lines_[index]), shape_.layout.separator, cells_);
    if (cells_.size() != shape_.cells) return false;
    return shape_.hasWords ? HasNumbers(cells_, shape_.layout.decimalMark)
                           : IsRowOfNumbers(cells_, shape_.layout.decimalMark);
  }

  /// Whether the line that has just been split looks like a row, if a bad one.
  bool BeginsWithNumber() const {
    return !cells_.empty() && !std::isnan(CellNumber(cells_.front(), shape_.layout.decimalMark));
  }

  /// The first number of the row that IsRow has just split.
  double FirstNumber() const {
    for (const std::string_view cell : cells_) {
      const double number = CellNumber(cell, shape_.layout.decimalMark);
      if (!std::isnan(number)) return number;
    }
    return 0;
  }

  /// Whether the line between rows names columns in other words than the line before that did.
  bool IsOtherHeading(std::string_view line) {
    if (line.empty() || BeginsWithNumber() || headingsSeen_ > kMostHeadings) return false;
    const auto names = HeadingCells(line, shape_.layout.separator, shape_.cells);
    if (names.size() != shape_.cells || !NameAFrequency(names)) return false;
    ++headingsSeen_;
    return std::exchange(heading_, line) != line;
  }

  /// A file may hold one sweep after the other. Behind a gap a first number that falls back, or
  /// other headings, begin a new sweep; the largest is read, of equal ones the first.
  Block LargestBlock() {
    Block largest;
    Block current;
    int blocks = 0;
    double last = 0;
    bool isGap = false;
    bool isOther = false;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      if (!IsRow(i)) {
        isGap = isGap || !BeginsWithNumber();
        isOther = IsOtherHeading(lines_[i]) || isOther;
        continue;
      }
      const double number = FirstNumber();
      const bool isNew = current.rows == 0 || isOther || (isGap && number <= last);
      isGap = false;
      isOther = false;
      if (isNew) {
        current = {i, i, 0};
        ++blocks;
      }
      current.last = i;
      ++current.rows;
      last = number;
      if (current.first == largest.first || current.rows > largest.rows) largest = current;
    }
    if (blocks > 1) {
      table_.notes.push_back("the file has " + std::to_string(blocks) +
                             " sweeps; the one from line " + std::to_string(largest.first + 1) +
                             " on is taken");
    }
    return largest;
  }

  void TakeHeadings(const Block& block, const TextChoices& choices) {
    const auto chosen = static_cast<std::size_t>(choices.headingLine);
    if (chosen > 0 && chosen <= lines_.size()) {
      headings_.line = choices.headingLine;
      headings_.names = HeadingCells(lines_[chosen - 1], shape_.layout.separator, shape_.cells);
      headings_.found = headings_.names.size();
      headings_.names.resize(shape_.cells);
    } else {
      headings_ = FindHeadings(lines_, block.first, shape_.layout.separator, shape_.cells);
    }
    for (const std::string& name : headings_.names) {
      table_.columns.push_back({name, MeaningOf(name)});
    }
  }

  void TakeLine(std::size_t index) {
    const std::string_view line = lines_[index];
    if (IsIdle(line)) return;
    SplitCells(WithoutComment(line), shape_.layout.separator, cells_);
    if (IsUsable()) {
      table_.AddRow(static_cast<int>(index) + 1, cells_);
    } else {
      table_.skippedLines.push_back(static_cast<int>(index) + 1);
    }
  }

  /// Empty lines, comments, rulers and the headings said once more hold no points.
  bool IsIdle(std::string_view line) const {
    if (IsRuler(line) || IsComment(line, shape_.layout.separator)) return true;
    return headings_.line > 0 && line == lines_[static_cast<std::size_t>(headings_.line) - 1];
  }

  /// At least two cells, one a number; more numbers than columns are decimal commas gone astray.
  bool IsUsable() const {
    const auto isNumber = [this](std::string_view cell) {
      return !std::isnan(CellNumber(cell, shape_.layout.decimalMark));
    };
    if (cells_.size() < 2 || std::none_of(cells_.begin(), cells_.end(), isNumber)) return false;
    if (cells_.size() <= shape_.cells) return true;
    return std::none_of(cells_.begin() + static_cast<std::ptrdiff_t>(shape_.cells), cells_.end(),
                        isNumber);
  }

  /// Whether the line begins like a row, but is none.
  bool IsTornRow(std::size_t index) {
    if (index >= lines_.size() || IsIdle(lines_[index]) || IsRow(index)) return false;
    return !cells_.empty() && !cells_.front().empty() &&
           std::string_view("+-.0123456789").find(cells_.front().front()) != std::string_view::npos;
  }

  /// Such lines right before the rows and right behind them belong to them.
  void TakeTornBegin(const Block& block) {
    std::size_t first = block.first;
    while (first > 0 && IsTornRow(first - 1)) --first;
    for (std::size_t i = first; i < block.first; ++i) TakeLine(i);
  }
  void TakeTornEnd(const Block& block) {
    for (std::size_t i = block.last + 1; IsTornRow(i); ++i) TakeLine(i);
  }

  const Lines& lines_;
  const RowShape shape_;
  SourceTable table_;
  Headings headings_;
  Cells cells_;
  std::string_view heading_;
  int headingsSeen_ = 0;
};

bool HasThousandsMarks(const Lines& lines) {
  return std::any_of(lines.begin(), lines.end(), [](std::string_view line) {
    for (std::size_t at = line.find_first_of(",.'"); at != std::string_view::npos;
         at = line.find_first_of(",.'", at + 1)) {
      const auto isDigit = [&](std::size_t i) {
        return i < line.size() && line[i] >= '0' && line[i] <= '9';
      };
      const bool threeDigits = isDigit(at + 1) && isDigit(at + 2) && isDigit(at + 3);
      if (at > 0 && isDigit(at - 1) && threeDigits && at + 4 < line.size() &&
          std::string_view(",.'").find(line[at + 4]) != std::string_view::npos) {
        return true;
      }
    }
    return false;
  });
}

std::string WhyNoRows(const Lines& lines) {
  if (HasThousandsMarks(lines)) {
    return "no rows of numbers: marks between thousands (1,234.5) are not taken";
  }
  return "fewer than two rows of at least two numbers";
}

/// "sep=;" on the first line is how a spreadsheet tells itself the separator.
char ToldSeparator(const Lines& lines) {
  if (lines.empty()) return 0;
  std::string_view first = TrimWhite(lines.front());
  if (first.starts_with('"') && first.ends_with('"') && first.size() > 1) {
    first = first.substr(1, first.size() - 2);
  }
  return first.size() == 5 && first.starts_with("sep=") ? first.back() : '\0';
}

}  // namespace

SourceTable ReadDelimited(std::string_view text, const TextChoices& choices, TextLayout* found) {
  const std::string rewritten = ComplexCellsAsColumns(text);
  const Lines lines = LinesOf(rewritten.empty() ? text : std::string_view(rewritten));
  const bool tooLong = std::any_of(lines.begin(), lines.end(), [](std::string_view line) {
    return line.size() > kLongestTextLine;
  });
  if (tooLong) return NoTable("a line is longer than 1 MB");
  Layout wanted = choices.layout;
  const char told = ToldSeparator(lines);
  if (wanted.separator == 0 && (told == ';' || told == ',' || told == '\t' || told == '|')) {
    wanted.separator = told;
  }
  const std::optional<RowShape> shape = FindShape(lines, wanted);
  if (!shape || (shape->hasWords && HasThousandsMarks(lines))) return NoTable(WhyNoRows(lines));
  if (shape->cells > kMostColumns) return NoTable("the rows have more than 4096 columns");
  if (shape->cells * lines.size() > kMostCells) return NoTable("the file has too many cells");
  return DelimitedReader(lines, *shape).Read(choices, found);
}

}  // namespace polefit

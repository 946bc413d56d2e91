#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace polefit {

/// How the cells of a text file are set apart.
struct Layout {
  /// ' ' stands for any run of blanks and tabs.
  char separator = ',';
  char decimalMark = '.';
  bool operator==(const Layout&) const = default;
};

/// The cells of a line, trimmed, without quotes around them and without empty ones at the end. In
/// quotes a separator is a character like any other.
void SplitCells(std::string_view line, char separator, std::vector<std::string_view>& cells);

/// A line of data without the comment at its end, which begins with "!", "#" or "%".
std::string_view WithoutComment(std::string_view line);

/// Whether all cells that are not empty are numbers, the first one and at least two.
bool IsRowOfNumbers(const std::vector<std::string_view>& cells, char decimalMark);
/// Whether at least two cells are numbers, other words beside them or not.
bool HasNumbers(const std::vector<std::string_view>& cells, char decimalMark);

/// What a file's rows look like.
struct RowShape {
  Layout layout;
  /// How many cells most rows have.
  std::size_t cells = 0;
  /// Other words stand beside the numbers.
  bool hasWords = false;
};

/// The layout under which the most lines are rows of numbers of one length; nothing where fewer
/// than two are. `wanted` keeps to a given separator or decimal mark (0 for any).
std::optional<RowShape> FindShape(const std::vector<std::string_view>& lines, Layout wanted);

}  // namespace polefit

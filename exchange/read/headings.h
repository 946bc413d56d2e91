#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/read/table.h"

namespace polefit {

/// Where the headings of a file's columns stand and what they are.
struct Headings {
  /// The line, counted from 1; 0 without one.
  int line = 0;
  /// One for each column; "" where the file has none.
  std::vector<std::string> names;
  /// How many the line itself has.
  std::size_t found = 0;
};

/// The cells of a heading line, with or without the mark of a comment before it. Separators within
/// round brackets part nothing, where that gives `columns` cells.
std::vector<std::string> HeadingCells(std::string_view line, char separator, std::size_t columns);

/// Looks upwards from `firstRow`, an index into `lines`, for the nearest line that names the
/// `columns` columns; a line of units below it is put behind the names.
Headings FindHeadings(const std::vector<std::string_view>& lines, std::size_t firstRow,
                      char separator, std::size_t columns);

/// Whether one of the names is that of a frequency.
bool NameAFrequency(const std::vector<std::string>& cells);
/// Whether the line begins like a comment, in a file with these separators.
bool IsComment(std::string_view line, char separator);
/// Whether the line has nothing but dashes and the like.
bool IsRuler(std::string_view line);

}  // namespace polefit

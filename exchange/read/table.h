#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/read/heading.h"

namespace polefit {

/// A column of a file: its heading as the file has it ("" without one), and what that says.
struct Column {
  std::string heading;
  Meaning meaning = {};
};

/// What a file holds under one name of a network parameter: "S21".
struct NetworkParameter {
  std::string name;
  /// Its first column; the second one, angle or imaginary part, follows.
  int column = 0;
};

enum class FileKind { delimited, network, responseFile };

/// A file as one table of named columns. Rows keep the order and the texts of the file.
class SourceTable {
 public:
  FileKind kind = FileKind::delimited;
  std::vector<Column> columns;
  /// The decimal mark of the cells.
  char decimalMark = '.';
  /// The parameters of a network file, else empty.
  std::vector<NetworkParameter> parameters;
  /// The numbers, from 1, of the lines that would be rows but cannot be read.
  std::vector<int> skippedLines;
  /// What was understood or left out that is worth a line, in words.
  std::vector<std::string> notes;
  /// Why there is no table, or empty.
  std::string fault;

  int Rows() const { return static_cast<int>(lines_.size()); }
  int Columns() const { return static_cast<int>(columns.size()); }
  /// The number of the line that a row comes from. Rows and columns count from 0.
  int LineOf(int row) const { return lines_[static_cast<std::size_t>(row)]; }
  /// The number in a cell, NaN when it holds none.
  double Number(int row, int column) const { return CellAt(row, column).number; }
  /// The cell as it stands in the file, without blanks at its ends.
  std::string_view Text(int row, int column) const {
    const Cell& cell = CellAt(row, column);
    return std::string_view(text_).substr(cell.begin, cell.length);
  }

  /// The columns must be there before the first row. `cells` may be fewer than them.
  void AddRow(int line, const std::vector<std::string_view>& cells);
  /// The same for cells whose numbers are known.
  void AddRow(int line, const std::vector<std::string_view>& cells,
              const std::vector<double>& numbers);
  void Reserve(std::size_t rows);

 private:
  struct Cell {
    double number;
    std::uint32_t begin;
    std::uint32_t length;
  };
  const Cell& CellAt(int row, int column) const {
    return cells_[static_cast<std::size_t>(row) * columns.size() +
                  static_cast<std::size_t>(column)];
  }

  std::string text_;
  std::vector<Cell> cells_;
  std::vector<int> lines_;
};

/// A table that says why there is none.
SourceTable NoTable(const std::string& fault);

}  // namespace polefit

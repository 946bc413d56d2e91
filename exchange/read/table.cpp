#include "exchange/read/table.h"

#include <limits>

#include "exchange/read/number_text.h"

namespace polefit {

void SourceTable::AddRow(int line, const std::vector<std::string_view>& cells) {
  std::vector<double> numbers;
  numbers.reserve(cells.size());
  for (const std::string_view cell : cells) numbers.push_back(CellNumber(cell, decimalMark));
  AddRow(line, cells, numbers);
}

void SourceTable::AddRow(int line, const std::vector<std::string_view>& cells,
                         const std::vector<double>& numbers) {
  lines_.push_back(line);
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const bool given = i < cells.size();
    const std::string_view cell = given ? cells[i] : std::string_view();
    cells_.push_back({given ? numbers[i] : std::numeric_limits<double>::quiet_NaN(),
                      static_cast<std::uint32_t>(text_.size()),
                      static_cast<std::uint32_t>(cell.size())});
    text_ += cell;
  }
}

void SourceTable::Reserve(std::size_t rows) {
  lines_.reserve(rows);
  cells_.reserve(rows * columns.size());
}

SourceTable NoTable(const std::string& fault) {
  SourceTable table;
  table.fault = fault;
  return table;
}

}  // namespace polefit

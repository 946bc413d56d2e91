#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "base/run_time_error.h"

namespace polefit {

/// The texts of one data grid, column by column. Rows and columns count from 1.
/// The columns are sized apart because New leaves one of them as it is.
template <std::size_t ColumnCount>
class PointLists {
 public:
  static constexpr int kColumns = static_cast<int>(ColumnCount);

  /// Makes every column `rows` empty cells long. Fewer than 1 row is error 9.
  void Resize(int rows) {
    for (int column = 1; column <= kColumns; ++column) ResizeColumn(column, rows);
  }

  /// Makes one column `rows` empty cells long. Fewer than 1 row is error 9.
  void ResizeColumn(int column, int rows) {
    if (rows < 1) throw MakeRunTimeError(error_number::kSubscriptOutOfRange);
    columns_[Index(column)].clear();
    columns_[Index(column)].resize(static_cast<std::size_t>(rows));
  }

  /// Keeps the first `rows` rows, filled up with empty ones when there are fewer. Fewer than 1 row
  /// is error 9.
  void KeepRows(int rows) {
    if (rows < 1) throw MakeRunTimeError(error_number::kSubscriptOutOfRange);
    for (auto& column : columns_) column.resize(static_cast<std::size_t>(rows));
  }

  /// The cell at `row`, `column`; outside the column it is error 9.
  std::string& At(int row, int column) { return const_cast<std::string&>(Cell(row, column)); }
  const std::string& At(int row, int column) const { return Cell(row, column); }

  /// How many cells the column holds, the spare one counted.
  int RowsOf(int column) const { return static_cast<int>(columns_[Index(column)].size()); }

  bool operator==(const PointLists&) const = default;

 private:
  static std::size_t Index(int column) {
    if (column < 1 || column > kColumns) {
      throw MakeRunTimeError(error_number::kSubscriptOutOfRange);
    }
    return static_cast<std::size_t>(column - 1);
  }

  const std::string& Cell(int row, int column) const {
    const std::vector<std::string>& cells = columns_[Index(column)];
    const auto index = static_cast<std::size_t>(row) - 1;
    if (index >= cells.size()) throw MakeRunTimeError(error_number::kSubscriptOutOfRange);
    return cells[index];
  }

  std::array<std::vector<std::string>, ColumnCount> columns_;
};

inline constexpr int kFrequencyColumn = 1;

/// Columns: frequency, Yin, Yout, weight.
using PassbandLists = PointLists<4>;
inline constexpr int kYinColumn = 2;
inline constexpr int kYoutColumn = 3;
inline constexpr int kWeightColumn = 4;

/// Columns: frequency, delay.
using DelayLists = PointLists<2>;
inline constexpr int kTxColumn = 2;

}  // namespace polefit

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "record/response_record.h"

namespace polefit {

/// The columns of both tables that a formula can fill.
enum class FillColumn { frequency, yin, yout, weight, delayFrequency, delay };

inline bool IsOfDelayTable(FillColumn column) {
  return column == FillColumn::delayFrequency || column == FillColumn::delay;
}

/// "Frequency", "Yin", "Yout", "Weight", "DelayFrequency" or "Delay", in upper or lower case.
std::optional<FillColumn> FillColumnOf(std::string_view name);

/// New frequencies for a table, in MHz: `steps` + 1 rows, both ends counted.
struct FrequencyGrid {
  double from = 0;
  double to = 1;
  int steps = 1;
  bool isLogarithmic = false;

  /// What keeps it from being a grid, or "".
  std::string Fault() const;
  double At(int row) const;  ///< rows count from 1
};

/// A formula for one column.
struct Fill {
  FillColumn column = FillColumn::yin;
  /// Of f (MHz), x (f / Freq Norm), yin, yout, w, tx and row. What the other table holds is
  /// interpolated at f, linearly, and beyond its ends it is the end's value.
  std::string expression;
  /// The table's frequencies from now on; without it they stay.
  std::optional<FrequencyGrid> grid;
};

/// What a fill would put into a column, row by row.
struct FilledColumn {
  /// Not finite in a row without a frequency.
  std::vector<double> frequencies;
  std::vector<double> values;
  /// Why the column cannot be filled, or "". It can be about a character of the expression or about
  /// a row, both from 1; 0 for neither.
  std::string fault;
  std::size_t place = 0;
  int row = 0;
};

/// Calculates all rows down to the last with any text in it, or the rows of the grid.
FilledColumn CalculateFill(const ResponseRecord& record, const Fill& fill);

/// Puts a column without a fault into the table. New rows, and those whose weight is empty while
/// question 3 is not answered Y, get weight 1. The points then reach down to the first row with an
/// empty cell, and at least as far as before. A grid with fewer rows than the table leaves those
/// behind its end out.
void PutFill(ResponseRecord& record, const Fill& fill, const FilledColumn& filled);

/// The last row of a table with any text in it, 0 when it is empty.
int LastTypedRow(const ResponseRecord& record, bool isDelayTable);

}  // namespace polefit

#pragma once

#include <array>
#include <string>
#include <vector>

#include "exchange/import/points.h"

namespace polefit {

/// The cells of a row of the passband table: Frequency, Yin, Yout, Weight.
using PassbandCells = std::array<std::string, 4>;
using DelayCells = std::array<std::string, 2>;

/// Which frequencies the table has afterwards.
enum class Frequencies {
  table,  ///< its own: the points are interpolated
  file,   ///< those of the points: the table's other columns are interpolated
  both    ///< its own, and those of the points between them
};

/// Which columns the points replace; the others stay the table's.
struct TakenColumns {
  bool yin = true;
  bool yout = true;
  bool weight = false;
};

/// A table after points have come in.
struct MergedTable {
  std::vector<PassbandCells> rows;
  /// Rows of the table outside of the points' range, which keep their cells, and points outside
  /// of the table's range, which are left out: nothing is drawn on beyond the ends.
  int keptRows = 0;
  int droppedPoints = 0;
};

/// The points as rows of cells.
std::vector<PassbandCells> CellsOfPoints(const std::vector<PassbandRow>& points);
std::vector<DelayCells> CellsOfPoints(const std::vector<DelayRow>& points);

/// Brings points into a table with rows. At equal frequencies the points' texts are taken as they
/// are, between them linearly over the frequency, in dB where all values of the column are above 0.
MergedTable Merge(const std::vector<PassbandCells>& table, const std::vector<PassbandRow>& points,
                  TakenColumns taken, Frequencies frequencies);

}  // namespace polefit

#pragma once

#include "grids/grid_state.h"
#include "record/point_lists.h"

namespace polefit {

inline constexpr int kWeightColumn = 4;

/// Titles, alignment and row numbers of the current grid; the row count stays. Column widths
/// become the titles' own.
void FormatGrid(GridState& state);

/// Empties the current grid down to a header and two numbered rows, sets its point count to 0 and
/// drops what stands in the editor. Data columns keep their widths.
void ClearGrid(GridState& state);

/// Makes `grid` the current one and clears it.
void ClearGrid(GridState& state, GridView& grid);

void ClearBoth(GridState& state);

/// Appends a row to the current grid. Data columns keep their widths.
void AddGridRow(GridState& state, bool renumber);

/// Column widths of both grids from their design widths, then their final widths. Once, at start.
void SizeGridColumns(GridState& state);

/// Shows the Weight column as wide as the Frequency column, or hides it.
void ShowWeightColumn(GridState& state, bool useWeights);

/// Fills both grids, just cleared, with `nFreqPoints` and `nDelayPoints` rows. Error 9 when a list
/// is shorter than its count.
void FillGrids(GridState& state, const PassbandPoints& passband, const DelayPoints& delay);

/// Reads both grids into the lists, cells trimmed, each up to the first row with an empty cell,
/// and sets the point counts. Error 6 for more than 32,766 points.
void ReadGrids(GridState& state, PassbandPoints& passband, DelayPoints& delay);

}  // namespace polefit

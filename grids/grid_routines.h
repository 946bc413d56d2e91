#pragma once

#include "grids/grid_state.h"
#include "record/point_lists.h"

namespace polefit {

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
void FillGrids(GridState& state, const PassbandLists& passband, const DelayLists& delay);

/// Reads both grids into the lists of `record`, cells trimmed, each up to the first row with an
/// empty cell, and sets its point counts. Its counts before decide which grid is read at all. What
/// stands in the open editor counts as the text of its cell; nothing on the form changes. Error 6
/// for more than 32,766 points.
void ReadGrids(const GridState& state, ResponseRecord& record);

/// Every row of both grids down to the last cell that is not empty, as it stands, with a spare row
/// behind, whatever the point counts.
void ReadAllRows(const GridState& state, PassbandLists& passband, DelayLists& delay);

/// Writes the rows of the lists that lie behind the points into the grids, which show the points,
/// and leaves spare rows below.
void FillRowsBehindPoints(GridState& state, const PassbandLists& passband, const DelayLists& delay);

}  // namespace polefit

#pragma once

#include <cstdint>

#include "grids/grid_view.h"

namespace polefit {

/// The program-wide values that the grids and their editor work on, borrowed.
struct GridState {
  GridView& PassData;
  GridView& DelayData;
  CellEditorView& txtCellEditor;
  /// The grid that the editor and the routines act on; one of the two above.
  GridView*& CurrentGrid;
  /// The cell that the editor writes back to.
  int& editedRow;
  int& editedColumn;
  std::int16_t& DataChanged;
  std::int16_t& nFreqPoints;
  std::int16_t& nDelayPoints;
};

}  // namespace polefit

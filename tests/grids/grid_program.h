#pragma once

#include "grids/fake_grid.h"
#include "grids/grid_routines.h"

namespace polefit::testing {

/// Both grids in memory with the values that the routines borrow, as a fresh form has them.
struct GridProgram {
  FakeGrid pass{5, 6810};
  FakeGrid delay{3, 5200};
  FakeCellEditor editor;
  GridView* current = &pass;
  int editedRow = 0;
  int editedColumn = 0;
  std::int16_t changed = 0;
  std::int16_t freqPoints = 0;
  std::int16_t delayPoints = 0;
  GridState state{pass,         delay,   editor,     current,    editedRow,
                  editedColumn, changed, freqPoints, delayPoints};
};

}  // namespace polefit::testing

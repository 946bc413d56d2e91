#pragma once

#include "grids/grid_view.h"
#include "record/document.h"

namespace polefit {

/// The two data grids, their one cell editor, and where that stands.
struct GridState {
  GridView& PassData;
  GridView& DelayData;
  CellEditorView& txtCellEditor;
  /// Whose point counts the grids open and close, and whose mark of changes they set.
  Document& document;
  /// The grid that the editor and the routines act on; one of the two above.
  GridView* CurrentGrid = &PassData;
  /// The cell that the editor writes back to.
  int editedRow = 0;
  int editedColumn = 0;
};

}  // namespace polefit

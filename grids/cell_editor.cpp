#include "grids/cell_editor.h"

#include "grids/grid_routines.h"

namespace polefit {

namespace {

/// Longer than any cell: up to the end of the text.
constexpr int kToTheEnd = 9999;
constexpr int kSpareRows = 3;

bool RowsRunOut(const GridView& grid) {
  return grid.CurrentRow() + kSpareRows > grid.RowCount();
}

void StoreEditedCell(GridState& state) {
  const std::string text = state.txtCellEditor.Text();
  if (text == state.CurrentGrid->Text(state.editedRow, state.editedColumn)) return;
  state.CurrentGrid->SetText(state.editedRow, state.editedColumn, text);
  state.document.DataChanged = 1;
}

/// Commits, moves the current cell by one row and shows the editor again. Any other direction
/// only commits.
void MoveCellEditor(GridState& state, int direction) {
  HideCellEditor(state, false);
  GridView& grid = *state.CurrentGrid;
  if (direction == kMoveUp) {
    if (grid.CurrentRow() > 1) grid.SetCurrentRow(grid.CurrentRow() - 1);
  } else if (direction == kMoveDown) {
    if (RowsRunOut(grid)) AddGridRow(state, true);
    grid.SetCurrentRow(grid.CurrentRow() + 1);
  } else {
    return;
  }
  ShowCellEditor(state);
  // What is typed down a column takes the place of what stands there.
  state.txtCellEditor.SetSelection(0, kToTheEnd);
}

}  // namespace

void ShowCellEditor(GridState& state) {
  GridView& grid = *state.CurrentGrid;
  grid.CollapseSelection();
  state.txtCellEditor.SetText(grid.Text(grid.CurrentRow(), grid.CurrentColumn()));
  state.txtCellEditor.ShowOver(grid);
  state.editedRow = grid.CurrentRow();
  state.editedColumn = grid.CurrentColumn();
}

void HideCellEditor(GridState& state, bool cancel) {
  if (!state.txtCellEditor.IsVisible()) return;
  if (!cancel) StoreEditedCell(state);
  state.txtCellEditor.Hide();
}

void CellEditorKeyPressed(GridState& state, EditorKey key) {
  switch (key) {
    case EditorKey::enter:
    case EditorKey::tab:
      return HideCellEditor(state, false);
    case EditorKey::escape:
      return HideCellEditor(state, true);
    case EditorKey::up:
      return MoveCellEditor(state, kMoveUp);
    case EditorKey::down:
      return MoveCellEditor(state, kMoveDown);
  }
}

void CellEditorGotFocus(GridState& state) {
  // Kept: PassData's position decides even while DelayData is edited, but the row goes to the
  // grid that is edited. Kept: that marks the data as changed.
  if (RowsRunOut(state.PassData)) AddGridRow(state, true);
}

void CellEditorLostFocus(GridState& state) {
  HideCellEditor(state, false);
}

void GridMousePressed(GridState& state, GridView& grid) {
  HideCellEditor(state, false);
  state.CurrentGrid = &grid;
}

void GridDoubleClicked(GridState& state, GridView& grid) {
  HideCellEditor(state, false);
  state.CurrentGrid = &grid;
  ShowCellEditor(state);
}

void GridCharacterTyped(GridState& state, GridView& grid, const std::string& character) {
  GridDoubleClicked(state, grid);
  // Kept: a control character opens the editor with the old text.
  if (static_cast<unsigned char>(character.at(0)) < ' ') return;
  state.txtCellEditor.SetText(character);
  state.txtCellEditor.SetSelection(1, kToTheEnd);
}

}  // namespace polefit

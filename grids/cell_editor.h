#pragma once

#include <string>

#include "grids/grid_state.h"

namespace polefit {

/// Puts the editor over the current cell of the current grid with the cell's text and gives it the
/// focus.
void ShowCellEditor(GridState& state);

/// Hides the editor if it is visible; unless `cancel`, its text goes into the edited cell as typed.
void HideCellEditor(GridState& state, bool cancel);

inline constexpr int kMoveDown = 2;
inline constexpr int kMoveUp = 3;

/// The keys that the editor acts on; all others edit its text.
enum class EditorKey { enter, escape, tab, up, down };

/// Enter and Tab commit, Escape gives the text up, Up and Down commit and go to the next row.
void CellEditorKeyPressed(GridState& state, EditorKey key);
/// Adds a row where the rows come to an end.
void CellEditorGotFocus(GridState& state);
/// The focus went to something else in the program: what was typed is kept.
void CellEditorLostFocus(GridState& state);

/// Commits into the grid that was being edited and makes `grid` the current one.
void GridMousePressed(GridState& state, GridView& grid);
void GridDoubleClicked(GridState& state, GridView& grid);
/// A character typed into `grid`: it replaces the cell's text in the editor. A control character
/// (code below 32) opens the editor with the cell's text.
void GridCharacterTyped(GridState& state, GridView& grid, const std::string& character);

}  // namespace polefit

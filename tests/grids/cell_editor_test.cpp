#include "grids/cell_editor.h"

#include <gtest/gtest.h>

#include "grids/grid_program.h"

namespace polefit::testing {
namespace {

struct CellEditor : ::testing::Test, GridProgram {
  CellEditor() {
    ClearBoth(state);
    current = &pass;
    for (int row = 3; row < 10; ++row) AddGridRow(state, true);
    pass.MoveTo(2, 3);
    pass.SetText(2, 3, "old");
    changed = 0;
  }
};

TEST_F(CellEditor, DownAddsARowWhenFewerThanTwoWouldBeLeft) {
  for (const auto& [row, rows] : {std::pair(7, 10), {8, 11}, {9, 12}}) {
    pass.MoveTo(row, 1);
    ShowCellEditor(state);
    MoveCellEditor(state, kMoveDown);
    EXPECT_EQ(pass.RowCount(), rows);
    EXPECT_EQ(pass.Row(rows - 1)[0], std::to_string(rows - 1));
    EXPECT_EQ(pass.CurrentRow(), row + 1);
    EXPECT_EQ(changed, row > 7 ? 1 : 0) << "a row added is a change";
  }
}

TEST_F(CellEditor, ItsFocusLooksAtPassDataButAddsToTheCurrentGrid) {
  current = &delay;
  pass.MoveTo(7, 1);
  CellEditorGotFocus(state);
  EXPECT_EQ(delay.RowCount(), 3);
  pass.MoveTo(8, 1);
  CellEditorGotFocus(state);
  EXPECT_EQ(delay.RowCount(), 4);
  EXPECT_EQ(pass.RowCount(), 10);
}

TEST_F(CellEditor, TextThatIsNoOtherIsNoChange) {
  ShowCellEditor(state);
  CellEditorLostFocus(state);
  EXPECT_EQ(changed, 0);
  EXPECT_FALSE(editor.visible);
}

}  // namespace
}  // namespace polefit::testing

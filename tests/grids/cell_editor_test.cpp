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
  void Type(const std::string& text) {
    ShowCellEditor(state);
    editor.text = text;
  }
};

TEST_F(CellEditor, ItTakesTheCurrentCellAndItsText) {
  ShowCellEditor(state);
  EXPECT_EQ(editor.over, &pass);
  EXPECT_EQ(editor.text, "old");
  EXPECT_EQ(pass.collapsed, 1);
  EXPECT_EQ(editedRow, 2);
  EXPECT_EQ(editedColumn, 3);
}

TEST_F(CellEditor, EachKeyStoresOrDropsAndMoves) {
  struct Case {
    EditorKey key;
    const char* cell;
    bool visible;
    int row;
  };
  for (const Case& c :
       {Case{EditorKey::enter, " new ", false, 2}, Case{EditorKey::tab, " new ", false, 2},
        Case{EditorKey::escape, "old", false, 2}, Case{EditorKey::up, " new ", true, 1},
        Case{EditorKey::down, " new ", true, 3}}) {
    pass.MoveTo(2, 3);
    pass.SetText(2, 3, "old");
    Type(" new ");
    changed = 0;
    CellEditorKeyPressed(state, c.key);
    EXPECT_EQ(pass.Text(2, 3), c.cell);
    EXPECT_EQ(changed, c.key == EditorKey::escape ? 0 : 1);
    EXPECT_EQ(editor.visible, c.visible);
    EXPECT_EQ(pass.CurrentRow(), c.row);
    HideCellEditor(state, true);
  }
}

TEST_F(CellEditor, UpOnTheFirstRowStoresAndStays) {
  pass.MoveTo(1, 1);
  Type("x");
  MoveCellEditor(state, kMoveUp);
  EXPECT_EQ(pass.Text(1, 1), "x");
  EXPECT_EQ(pass.CurrentRow(), 1);
  EXPECT_TRUE(editor.visible);
  MoveCellEditor(state, 4);
  EXPECT_FALSE(editor.visible);
}

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

TEST_F(CellEditor, AMousePressOnEitherGridStoresIntoTheGridThatWasEdited) {
  for (FakeGrid* pressed : {&pass, &delay}) {
    current = &pass;
    Type("pressed");
    pass.SetText(2, 3, "old");
    GridMousePressed(state, *pressed);
    EXPECT_EQ(pass.Text(2, 3), "pressed");
    EXPECT_FALSE(editor.visible);
    EXPECT_EQ(current, pressed);
  }
}

TEST_F(CellEditor, ATypedCharacterReplacesTheTextAndAControlCharacterKeepsIt) {
  current = &delay;
  for (const auto& [typed, shown] :
       {std::pair("7", "7"), {" ", " "}, {"µ", "µ"}, {"\r", "old"}, {"\x1f", "old"}}) {
    editor.visible = false;
    GridCharacterTyped(state, pass, typed);
    EXPECT_EQ(current, &pass);
    EXPECT_EQ(editor.text, shown);
  }
  GridCharacterTyped(state, pass, "8");
  EXPECT_EQ(editor.selectionStart, 1);
  EXPECT_EQ(editor.selectionLength, 9999);
}

TEST_F(CellEditor, TextThatIsNoOtherIsNoChange) {
  Type("old");
  CellEditorLostFocus(state);
  EXPECT_EQ(changed, 0);
  EXPECT_FALSE(editor.visible);
}

}  // namespace
}  // namespace polefit::testing

#include "grids/grid_routines.h"

#include <gtest/gtest.h>

#include "grids/cell_editor.h"
#include "grids/fake_grid.h"
#include "platform/error_of.h"

namespace polefit::testing {
namespace {

using Cells = std::vector<std::string>;

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

struct GridRoutines : ::testing::Test, GridProgram {
  /// Shows `count` points whose cells name their row and column.
  void Show(int count) {
    PassbandPoints points;
    points.Resize(count + 1);
    for (int row = 1; row <= count; ++row) {
      for (int column = 1; column <= 4; ++column) {
        points.At(row, column) = std::to_string(row) + "." + std::to_string(column);
      }
    }
    ClearGrid(state, pass);
    freqPoints = static_cast<std::int16_t>(count);
    FillGrids(state, points, DelayPoints());
  }
};

TEST_F(GridRoutines, AClearedGridHasItsTitlesAndTwoNumberedRowsAndKeepsItsDataColumnWidths) {
  pass.SetText(1, 1, "7");
  pass.SetColumnWidth(2, 1234);
  freqPoints = delayPoints = 9;
  ClearBoth(state);
  ASSERT_EQ(pass.RowCount(), 3);
  EXPECT_EQ(pass.Row(0), (Cells{"#", "Frequency", "Yin", "Yout", "Weight"}));
  EXPECT_EQ(pass.Row(1), (Cells{"1", "", "", "", ""}));
  EXPECT_EQ(delay.Row(0), (Cells{"#", "Frequency", "Delay (tx)"}));
  EXPECT_EQ(delay.Row(2), (Cells{"2", "", ""}));
  EXPECT_EQ(pass.ColumnWidth(2), 1234);
  EXPECT_EQ(freqPoints + delayPoints, 0);
  EXPECT_EQ(changed, 1);
  EXPECT_EQ(current, &delay);
}

TEST_F(GridRoutines, ClearingDropsWhatStandsInTheEditor) {
  Show(2);
  editor.visible = true;
  editor.text = "typed";
  editedRow = 1;
  editedColumn = 1;
  current = &delay;
  ClearGrid(state);
  EXPECT_FALSE(editor.visible);
  EXPECT_EQ(delay.Row(1), (Cells{"1", "", ""}));
  EXPECT_EQ(pass.Text(1, 1), "1.1");
}

TEST_F(GridRoutines, FivePointsGiveNineNumberedRowsAndReadBackAsFive) {
  Show(5);
  ASSERT_EQ(pass.RowCount(), 9);
  for (int row = 1; row < 9; ++row) EXPECT_EQ(pass.Row(row)[0], std::to_string(row));
  EXPECT_EQ(pass.Row(5), (Cells{"5", "5.1", "5.2", "5.3", "5.4"}));
  EXPECT_EQ(pass.Row(6), (Cells{"6", "", "", "", ""}));
  PassbandPoints read;
  DelayPoints none;
  ReadGrids(state, read, none);
  EXPECT_EQ(freqPoints, 5);
  EXPECT_EQ(read.At(5, 4), "5.4");
  EXPECT_EQ(read.RowsOf(1), 10);
}

TEST_F(GridRoutines, TheReadOutEndsAtTheFirstRowWithAnEmptyCell) {
  struct Case {
    const char* what;
    int row, column;
    const char* text;
    int points;
  };
  for (const Case& c : {Case{"an empty Yout", 3, 3, "", 2}, Case{"blanks only", 2, 1, "  ", 1},
                        Case{"an empty Weight, hidden or not", 1, 4, "", 0},
                        Case{"a point more", 5, 1, " 5 ", 4}}) {
    Show(4);
    ShowWeightColumn(state, false);
    pass.SetText(c.row, c.column, c.text);
    PassbandPoints read;
    DelayPoints none;
    ReadGrids(state, read, none);
    EXPECT_EQ(freqPoints, c.points) << c.what;
    EXPECT_EQ(read.At(1, 1), "1.1") << c.what;
  }
}

TEST_F(GridRoutines, CellsAreTrimmedAndAFullGridEndsBehindItsLastRow) {
  ClearGrid(state, delay);
  delayPoints = 1;
  for (int row = 1; row <= 2; ++row) {
    delay.SetText(row, 1, "  1 5 ");
    delay.SetText(row, 2, "\t2");
  }
  PassbandPoints none;
  DelayPoints read;
  ReadGrids(state, none, read);
  EXPECT_EQ(delayPoints, 2);
  EXPECT_EQ(read.At(1, 1), "1 5");
  EXPECT_EQ(read.At(2, 2), "\t2");
}

TEST_F(GridRoutines, AGridWithoutPointsIsNotRead) {
  ClearGrid(state, pass);
  for (int column = 1; column <= 4; ++column) pass.SetText(1, column, "1");
  for (const std::int16_t count : {std::int16_t{0}, std::int16_t{-3}}) {
    freqPoints = count;
    PassbandPoints read;
    read.Resize(7);
    DelayPoints none;
    ReadGrids(state, read, none);
    EXPECT_EQ(freqPoints, count);
    EXPECT_EQ(read.RowsOf(1), 1);
    EXPECT_EQ(read.At(1, 1), "");
  }
}

TEST_F(GridRoutines, ACountBeyondTheListsIsErrorNine) {
  PassbandPoints points;
  points.Resize(2);
  freqPoints = 3;
  EXPECT_EQ(ErrorOf([&] { FillGrids(state, points, DelayPoints()); }),
            error_number::kSubscriptOutOfRange);
}

TEST_F(GridRoutines, MorePointsThanTheReaderTakesAreErrorSix) {
  Show(32766);
  PassbandPoints read;
  DelayPoints none;
  ReadGrids(state, read, none);
  EXPECT_EQ(freqPoints, 32766);
  for (int column = 1; column <= 4; ++column) pass.SetText(32767, column, "1");
  EXPECT_EQ(ErrorOf([&] { ReadGrids(state, read, none); }), error_number::kOverflow);
}

TEST_F(GridRoutines, ColumnsAreSizedFromTheDesignWidths) {
  const auto widths = [](const FakeGrid& grid, int columns) {
    std::vector<int> all = {grid.Width()};
    for (int column = 1; column <= columns; ++column) all.push_back(grid.ColumnWidth(column));
    return all;
  };
  pass.SetColumnWidth(0, 388);   // leaves 6402: a quarter is 1600.5, halves go to the even one
  delay.SetColumnWidth(0, 387);  // leaves 4793
  SizeGridColumns(state);
  EXPECT_EQ(widths(pass, 4), (std::vector{6910, 1600, 1600, 1602, 1600}));
  EXPECT_EQ(widths(delay, 2), (std::vector{5315, 2396, 2367}));
}

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

TEST_F(CellEditor, AMousePressOnEitherGridStoresIntoTheGridThatWasEdited) {
  for (FakeGrid* pressed : {&pass, &delay}) {
    current = &pass;
    ShowCellEditor(state);
    editor.text = pressed == &pass ? "first" : "second";
    GridMousePressed(state, *pressed);
    EXPECT_EQ(pass.Text(editedRow, editedColumn), editor.text);
    EXPECT_FALSE(editor.visible);
    EXPECT_EQ(current, pressed);
  }
}

TEST_F(CellEditor, ATypedCharacterReplacesTheTextAndAControlCharacterKeepsIt) {
  pass.SetText(pass.CurrentRow(), pass.CurrentColumn(), "old");
  for (const auto& [typed, shown] : {std::pair("7", "7"), {"µ", "µ"}, {"\x1f", "old"}}) {
    GridCharacterTyped(state, pass, typed);
    EXPECT_EQ(editor.text, shown);
    HideCellEditor(state, true);
  }
}

TEST_F(CellEditor, TextThatIsNoOtherIsNoChange) {
  ShowCellEditor(state);
  CellEditorLostFocus(state);
  EXPECT_EQ(changed, 0);
  EXPECT_FALSE(editor.visible);
}

}  // namespace
}  // namespace polefit::testing

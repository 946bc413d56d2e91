#include "grids/grid_routines.h"

#include <gmock/gmock.h>

#include "base/error_of.h"
#include "grids/cell_editor.h"
#include "grids/fake_grid.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;

/// Both grids in memory with the values that the routines borrow, as a fresh form has them.
struct GridRoutines : ::testing::Test {
  FakeGrid pass{5, 6810};
  FakeGrid delay{3, 5200};
  FakeCellEditor editor;
  Document document;
  GridState state{pass, delay, editor, document};
  PassbandLists& passRead = document.record.passband;
  DelayLists& delayRead = document.record.delay;

  void Read() { ReadGrids(state, document.record); }
  void Show(int count) {
    PassbandLists points;
    FillPoints(points, count);
    ClearGrid(state, pass);
    document.record.nFreqPoints = static_cast<std::int16_t>(count);
    FillGrids(state, points, DelayLists());
  }
};

TEST_F(GridRoutines, AClearedGridHasItsTitlesAndTwoNumberedRowsAndKeepsItsDataColumnWidths) {
  Show(2);
  pass.SetColumnWidth(2, 1234);
  document.record.nDelayPoints = 9;
  editor.visible = true;
  ClearGrid(state, delay);
  EXPECT_EQ(document.record.nDelayPoints, 0);
  EXPECT_EQ(state.CurrentGrid, &delay);
  EXPECT_FALSE(editor.visible) << "what stands in it goes too";
  EXPECT_THAT(delay.Rows(), ElementsAre(Cells{"#", "Frequency", "Delay (tx)"}, Cells{"1", "", ""},
                                        Cells{"2", "", ""}));
  EXPECT_EQ(pass.Text(1, 1), "1.1");
  document.DataChanged = 0;
  ClearBoth(state);
  EXPECT_EQ(document.DataChanged, 1);
  EXPECT_EQ(document.record.nFreqPoints, 0);
  EXPECT_THAT(pass.Rows(), ElementsAre(Cells{"#", "Frequency", "Yin", "Yout", "Weight"},
                                       Cells{"1", "", "", "", ""}, Cells{"2", "", "", "", ""}));
  EXPECT_EQ(pass.ColumnWidth(2), 1234);
  AddGridRow(state, false);
  EXPECT_EQ(delay.Row(3), (Cells{"", "", ""})) << "a row without a number";
}

TEST_F(GridRoutines, TheReadOutEndsAtTheFirstRowWithAnEmptyCell) {
  // Column 4 is the weight, which counts though it is hidden.
  for (const auto& [row, column, text, points] :
       {std::tuple(3, 3, "", 2), {2, 1, "  ", 1}, {1, 4, "", 0}, {5, 1, " 5 ", 4}}) {
    Show(4);
    ShowWeightColumn(state, false);
    pass.SetText(row, column, text);
    Read();
    EXPECT_EQ(document.record.nFreqPoints, points) << row << "," << column;
    EXPECT_EQ(passRead.At(1, 1), "1.1");
  }
}

TEST_F(GridRoutines, AGridWithoutPointsIsNotReadAndAFullOneToItsLastRow) {
  for (const auto& [count, read, rows, first] :
       {std::tuple(std::int16_t{1}, 2, 4, "1 5"), {0, 0, 1, ""}, {-3, -3, 1, ""}}) {
    ClearGrid(state, delay);
    delay.Row(1) = delay.Row(2) = {"", "  1 5 ", "\t2"};
    document.record.nDelayPoints = count;
    Read();
    EXPECT_EQ(document.record.nDelayPoints, read);
    EXPECT_EQ(delayRead.RowsOf(2), rows) << count;
    EXPECT_EQ(delayRead.At(1, 1), first) << count << ": only blanks around a cell go";
    EXPECT_EQ(delayRead.At(1, 2), read > 0 ? "\t2" : "");
  }
}

TEST_F(GridRoutines, PointsGiveNumberedRowsAndFourMoreUpToTheLargestCount) {
  Show(32766);
  ASSERT_EQ(pass.RowCount(), 32770);
  for (int row = 1; row < 32770; ++row) ASSERT_EQ(pass.Text(row, 0), std::to_string(row));
  EXPECT_EQ(pass.Row(5), (Cells{"5", "5.1", "5.2", "5.3", "5.4"}));
  EXPECT_EQ(pass.Row(32767), (Cells{"32767", "", "", "", ""}));
  Read();
  EXPECT_EQ(document.record.nFreqPoints, 32766);
  EXPECT_EQ(passRead.At(32766, 4), "32766.4");
  pass.Row(32767) = {"", "1", "1", "1", "1"};
  EXPECT_EQ(ErrorOf([&] { Read(); }), error_number::kOverflow);
  EXPECT_EQ(ErrorOf([&] { FillGrids(state, PassbandLists(), DelayLists()); }),
            error_number::kSubscriptOutOfRange);
}

TEST_F(GridRoutines, ColumnsAreSizedFromTheDesignWidths) {
  pass.SetColumnWidth(0, 388);   // leaves 6402: a quarter is 1600.5, halves go to the even one
  delay.SetColumnWidth(0, 387);  // leaves 4793
  SizeGridColumns(state);
  EXPECT_THAT(pass.ColumnWidths(), ElementsAre(388, 1600, 1600, 1602, 1600));
  EXPECT_THAT(delay.ColumnWidths(), ElementsAre(387, 2396, 2367));
  EXPECT_EQ(pass.Width(), 6910);
  EXPECT_EQ(delay.Width(), 5315);
}

using CellEditor = GridRoutines;

TEST_F(CellEditor, ItsFocusLooksAtPassDataButAddsToTheCurrentGrid) {
  Show(6);
  ClearGrid(state, delay);
  for (const auto& [row, added] : {std::pair(7, 0), {8, 1}}) {
    document.DataChanged = 0;
    pass.SetCurrentRow(row);
    CellEditorGotFocus(state);
    EXPECT_EQ(delay.RowCount(), 3 + added);
    EXPECT_EQ(document.DataChanged, added) << "a row added is a change";
  }
  EXPECT_EQ(delay.Text(3, 0), "3");
  EXPECT_EQ(pass.RowCount(), 10);
}

TEST_F(CellEditor, AMousePressOnTheOtherGridStoresIntoTheGridThatWasEdited) {
  GridDoubleClicked(state, pass);
  editor.text = "typed";
  GridMousePressed(state, delay);
  EXPECT_EQ(pass.Text(1, 1), "typed");
  EXPECT_FALSE(editor.visible);
  EXPECT_EQ(state.CurrentGrid, &delay);
}

}  // namespace
}  // namespace polefit::testing

#include "form/table_edits.h"

#include <gmock/gmock.h>

#include <array>
#include <functional>
#include <vector>

#include "form/scripted_program.h"
#include "form/transfer.h"
#include "grids/grid_routines.h"
#include "record/points.h"

namespace polefit::testing {
namespace {

using ::testing::HasSubstr;

/// The cells of a table as text: "1,2/3,4", a row behind the points after "|".
template <std::size_t Columns>
std::string TextOf(const PointLists<Columns>& points, int count) {
  std::string text;
  for (int row = 1; row < points.RowsOf(1); ++row) {
    if (row > 1) text += row == count + 1 ? "|" : "/";
    for (int column = 1; column <= points.kColumns; ++column) {
      text += (column > 1 ? "," : "") + points.At(row, column);
    }
  }
  return text;
}

FormCells Tables(int delayCount, const std::vector<std::array<std::string, 2>>& delay,
                 const std::vector<std::array<std::string, 4>>& passband = {}) {
  FormCells cells;
  cells.typed.nDelayPoints = static_cast<std::int16_t>(delayCount);
  cells.typed.delay.Resize(static_cast<int>(delay.size()) + 1);
  for (int row = 1; const auto& line : delay) {
    for (int column = 1; const std::string& cell : line) cells.typed.delay.At(row, column++) = cell;
    ++row;
  }
  cells.typed.passband.Resize(static_cast<int>(passband.size()) + 1);
  for (int row = 1; const auto& line : passband) {
    for (int column = 1; const std::string& cell : line) {
      cells.typed.passband.At(row, column++) = cell;
    }
    ++row;
  }
  return cells;
}

std::string Delay(const FormCells& cells) {
  return TextOf(cells.typed.delay, cells.typed.nDelayPoints);
}
std::string Passband(const FormCells& cells) {
  return TextOf(cells.typed.passband, cells.typed.nFreqPoints);
}

TEST(TableEdits, RowsComeGoMoveAndAreFilled) {
  const FormCells start = Tables(3, {{"3", "a"}, {"1", "b"}, {"", "c"}, {"2", "d"}});
  const auto after = [&start](auto edit) {
    FormCells cells = start;
    edit(cells);
    return Delay(cells);
  };
  EXPECT_EQ(after([](auto&) {}), "3,a/1,b/,c|2,d");
  EXPECT_EQ(after([](auto& cells) { DeleteRows(cells, Table::delay, 2, 3); }), "3,a|2,d");
  EXPECT_EQ(after([](auto& cells) { DeleteRows(cells, Table::delay, 4, 9); }), "3,a/1,b/,c");
  EXPECT_EQ(after([](auto& cells) { DeleteRows(cells, Table::delay, 1, 9); }), "");
  EXPECT_EQ(after([](auto& cells) {
              InsertRows(cells, Table::delay, {2, 3, 1, 1});
            }),
            "3,a/,/,/1,b/,c|2,d");
  EXPECT_EQ(after([](auto& cells) {
              FillDown(cells, Table::delay, {2, 5, 1, 1});
            }),
            "3,a/1,b/1,c|1,d/1,");
  EXPECT_EQ(after([](auto& cells) { ClearBlock(cells, Table::delay, {3, 4, 1, 2}); }), "3,a/1,b");
  EXPECT_EQ(after([](auto& cells) { SortByFrequency(cells, Table::delay); }), "1,b/2,d/3,a|,c");
  FormCells full = Tables(0, {});
  full.typed.delay.Resize(kMostPoints + 1);
  full.typed.delay.At(kMostPoints, 1) = "1";
  EXPECT_FALSE(InsertRows(full, Table::delay, {1, 1, 1, 1}));
}

TEST(TableEdits, ABlockIsCopiedAsItStandsWithoutEmptyEndAndHiddenWeight) {
  FormCells cells = Tables(0, {}, {{" 1", "2", "3", "9"}, {"", "x y", "", "9"}});
  EXPECT_EQ(CopyBlock(cells, Table::passband, {1, 7, 1, 4}), " 1\t2\t3\r\n\tx y\t\r\n");
  EXPECT_EQ(CopyBlock(cells, Table::passband, {2, 2, 2, 2}), "x y\r\n");
  cells.typed.Slot(slot::kUseWeights) = "Y";
  EXPECT_EQ(CopyBlock(cells, Table::passband, {1, 1, 3, 4}), "3\t9\r\n");
}

TEST(TableEdits, APastedBlockIsTakenWholeOrNotAtAll) {
  struct Case {
    const char* text;
    int row, column;
    const char* passband;
    const char* refusal;
  };
  for (const auto& [text, row, column, passband, refusal] : {
           Case{"5\t6\t7\r\n8\t9\t10\r\n", 1, 1, "5,6,7,w/8,9,10,1", ""},
           {"5\t6\n7\t8\n9\t10", 2, 2, "1,2,3,w|,5,6,1/,7,8,1/,9,10,1", ""},
           {"5", 2, 3, "1,2,3,w|,,5,", ""},
           {"any, text \r\n", 1, 2, "1,any, text ,3,w", ""},
           {" 1e-3 \t\n-.5\t+7", 1, 1, " 1e-3 ,,3,w|-.5,+7,,1", ""},
           {"f\tYin\n1\t2", 1, 1, "1,2,3,w",
            "row 1 of the clipboard holds 'f', which is no number."},
           {"0,5\t1\n0,6\t2", 1, 1, "1,2,3,w", "decimal point"},
           {"1\t2\n3", 1, 1, "1,2,3,w", "row 2 of the clipboard has another number of cells"},
           {"1\t2\t3\t4", 1, 1, "1,2,3,w", "has 4 columns, and from here there are 3."},
           {"1\n2", 32766, 1, "1,2,3,w", "more than 32766 rows"},
           {"", 1, 1, "1,2,3,w", "no text on the clipboard"},
       }) {
    FormCells cells = Tables(0, {}, {{"1", "2", "3", "w"}});
    cells.typed.nFreqPoints = 1;
    const FormCells before = cells;
    EXPECT_THAT(Paste(cells, Table::passband, row, column, text), HasSubstr(refusal)) << text;
    EXPECT_EQ(Passband(cells), passband) << text;
    if (*refusal != '\0') {
      EXPECT_EQ(cells, before) << text;
    }
  }
}

TEST(TableEdits, PastedAndKeptRowsBecomePointsInATableWithoutAny) {
  FormCells cells = Tables(0, {{"1", "2"}, {"3", "4"}, {"5", ""}},
                           {{"1", "2", "3", ""}, {"4", "5", "6", " "}, {"7", "", "", "8"}});
  EXPECT_EQ(UnsavedRows(cells, Table::delay), "3 rows typed, no points yet.");
  EXPECT_TRUE(CanKeepRows(cells, Table::delay));
  KeepTypedRows(cells, Table::delay);
  EXPECT_FALSE(CanKeepRows(cells, Table::delay));
  EXPECT_EQ(Delay(cells), "1,2/3,4|5,");
  EXPECT_EQ(UnsavedRows(cells, Table::delay), "Row 3 is not saved: row 3 has no Delay.");
  KeepTypedRows(cells, Table::passband);
  EXPECT_EQ(Passband(cells), "1,2,3,1/4,5,6,1|7,,,8");
  cells.typed.passband.At(1, 4) = "";
  EXPECT_EQ(UnsavedRows(cells, Table::passband),
            "Rows 1 to 3 are not saved: row 1 has no Weight (column hidden).");
  cells = Tables(0, {});
  EXPECT_EQ(Paste(cells, Table::delay, 1, 1, "1\t2\n3\t4\n"), "");
  EXPECT_EQ(cells.typed.nDelayPoints, 2);
  EXPECT_EQ(UnsavedRows(cells, Table::delay), "");
}

/// Rows that the read-out does not reach: row 3 has no weight, the delay table no points.
TEST(TableEdits, NoCommandTakesATypedCellThatWasNotSelected) {
  const auto edits = std::vector<std::function<void(FormCells&)>>{
      [](FormCells& cells) { Paste(cells, Table::passband, 1, 1, "7\t7\n7\t7"); },
      [](FormCells& cells) {
        ClearBlock(cells, Table::passband, {1, 2, 1, 2});
      },
      [](FormCells& cells) {
        InsertRows(cells, Table::passband, {1, 1, 1, 1});
      },
      [](FormCells& cells) { SortByFrequency(cells, Table::passband); },
      [](FormCells& cells) { KeepTypedRows(cells, Table::passband); },
      [](FormCells& cells) { DeleteRows(cells, Table::passband, 1, 2); },
  };
  for (std::size_t i = 0; i < edits.size(); ++i) {
    ScriptedProgram scripted;
    Program& program = scripted.program;
    PutAnswers(program);
    SetPoints(program.document.record, 40);
    GetAnswers(program);
    scripted.form.passData.SetText(3, 4, "");
    ClearGrid(program.windows.grids, scripted.form.delayData);
    scripted.form.delayData.Row(2) = {"2", "1", "2"};
    FormCells cells = CellsOf(program);
    edits[i](cells);
    ShowCells(program, cells);
    const FormCells shown = CellsOf(program);
    EXPECT_EQ(shown.typed.passband, cells.typed.passband) << i;
    EXPECT_EQ(TextOf(shown.typed.delay, 0), ",/1,2") << i;
    for (const char* lastCell : {"40.1", "40.2", "40.3", "40.4"}) {
      EXPECT_THAT(TextOf(shown.typed.passband, 99), HasSubstr(lastCell)) << i;
    }
  }
}

}  // namespace
}  // namespace polefit::testing

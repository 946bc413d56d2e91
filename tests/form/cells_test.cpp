#include "form/cells.h"

#include <gmock/gmock.h>

#include <functional>

#include "form/scripted_program.h"
#include "form/transfer.h"
#include "grids/cell_editor.h"
#include "grids/grid_routines.h"
#include "record/points.h"
#include "responsefile/writer.h"

namespace polefit::testing {
namespace {

/// Five points in both grids, then what a case does to the form.
struct CellsTest : ::testing::Test, ScriptedProgram {
  CellsTest() {
    PutAnswers(program);
    fresh = program.document.record;
  }

  void Reset() {
    program.document.RunMode = "*";
    program.document.record = fresh;
    SetPoints(program.document.record, 5);
    GetAnswers(program);
  }
  void Edit(GridView& grid, int row, const std::string& text) {
    GridMousePressed(program.windows.grids, grid);
    grid.SetCurrentRow(row);
    GridCharacterTyped(program.windows.grids, grid, "x");
    form.editor.text = text;
  }

  ResponseRecord fresh;

  struct Case {
    const char* what;
    std::function<void()> edit;
  };
  const std::vector<Case> cases = {
      {"nothing", [] {}},
      {"answers", [this] { form.SetText("Note1", " a "), form.SetChecked("chkDoublet", true); }},
      {"an open editor", [this] { Edit(form.passData, 2, " 7 "); }},
      {"an open editor that empties a cell", [this] { Edit(form.delayData, 4, ""); }},
      {"an open editor behind the points", [this] { Edit(form.delayData, 7, "9"); }},
      {"a row without a weight", [this] { form.passData.SetText(3, 4, ""); }},
      {"a last row that is gone",
       [this] {
         form.passData.Row(5) = {"5", "", "", "", ""};
       }},
      {"a longer table",
       [this] {
         form.delayData.Row(6) = {"", " 6", "6"};
       }},
      {"counts with blanks", [this] { form.SetText("nYzeros", "1 2"); }},
      {"a count too large for a double", [this] { form.SetText("nZpairs", "1e999"); }},
      {"no solver values", [this] { form.SetText("Remax", ""), form.SetText("Ratio", "3"); }},
      {"a demo", [this] { program.document.RunMode = "Demo"; }},
      {"rows without points",
       [this] {
         ClearBoth(program.windows.grids);
         form.passData.Row(2) = {"2", "1", "", "2", ""};
         form.delayData.Row(1) = {"1", "1", "2"};
       }},
  };
};

TEST_F(CellsTest, TheRecordReadIsTheOneThatASaveWritesAndReadingChangesNothing) {
  for (const auto& [what, edit] : cases) {
    Reset();
    edit();
    program.document.DataChanged = 0;
    const ResponseRecord before = program.document.record;
    const FormCells cells = CellsOf(program);
    const ResponseRecord read = RecordOf(program);
    EXPECT_EQ(CellsOf(program), cells) << what;
    EXPECT_EQ(program.document.record, before) << what;
    EXPECT_EQ(program.document.DataChanged, 0) << what;
    PutAnswers(program);
    WriteResponseFile(host, program.document.record, {user, "saved"});
    ResponseRecord saved = program.document.record;
    saved.passband.KeepRows(saved.nFreqPoints + 1);
    saved.delay.KeepRows(saved.nDelayPoints + 1);
    EXPECT_EQ(saved, read) << what;
  }
}

TEST_F(CellsTest, WhatIsShownAgainIsWhatWasTypedWhateverTheCountsReach) {
  for (const auto& [what, edit] : cases) {
    Reset();
    edit();
    const FormCells cells = CellsOf(program);
    form.editor.visible = false;
    program.files = {};
    program.document.record = fresh;
    SetPoints(program.document.record, 40);
    GetAnswers(program);
    form.SetText("LastFileName", "another");
    ShowCells(program, cells);
    EXPECT_EQ(program.document.DataChanged, 1) << what;
    const FormCells shown = CellsOf(program);
    FormCells expected = cells;
    if (cells.editor) {
      // The editor is closed and its text stands in its cell.
      EXPECT_FALSE(form.editor.visible) << what;
      const GridView& grid = cells.editor->isDelay ? form.delayData : form.passData;
      EXPECT_EQ(grid.Text(cells.editor->row, 1), cells.editor->text) << what;
      expected.editor.reset();
      expected.typed.passband = shown.typed.passband;
      expected.typed.delay = shown.typed.delay;
    }
    EXPECT_EQ(shown, expected) << what;
  }
}

}  // namespace
}  // namespace polefit::testing

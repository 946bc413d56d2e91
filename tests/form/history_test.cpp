#include "form/history.h"

#include <gmock/gmock.h>

#include <random>

#include "app/file_commands.h"
#include "check/cures.h"
#include "exchange/fill_column.h"
#include "form/scripted_program.h"
#include "form/solver_settings.h"
#include "form/table_edits.h"
#include "form/transfer.h"
#include "grids/grid_routines.h"
#include "record/points.h"
#include "responsefile/writer.h"

namespace polefit::testing {
namespace {

struct HistoryTest : ::testing::Test, ScriptedProgram {
  HistoryTest() {
    PutAnswers(program);
    SetPoints(program.document.record, 5);
    GetAnswers(program);
  }
};

/// Edits of every kind, and the commands that replace the data, by chance.
class Walk {
 public:
  Walk(ScriptedProgram& scripted)
      : host_(scripted.host), program_(scripted.program), form_(scripted.form) {
    ResponseRecord record;
    record.Slot(slot::kZeroCounts) = "1 0 0";
    SetPoints(record, 7);
    WriteResponseFile(host_, record, {scripted.user, "opened"});
  }

  int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }

  StepKind Step() {
    if (Below(8) > 0) {
      Edit();
      return StepKind::edit;
    }
    // A question about changed data would come first; the walk has no data to lose.
    program_.document.DataChanged = 0;
    if (Below(2) == 0) {
      OpenResponseFile(program_, host_.Path("Tessel.hz/User/opened"));
    } else {
      host_.ReplyToBox(Reply::ok);
      FileNew(program_);
    }
    return StepKind::replacesDocument;
  }

 private:
  void Edit() {
    switch (Below(14)) {
      case 0:
        return form_.SetText("nYzeros", std::to_string(Below(3)) + " " + std::to_string(Below(9)));
      case 1:
        return form_.SetText("poleReal", std::string(static_cast<std::size_t>(Below(40)), '7'));
      case 2:
        return form_.SetChecked("chkUseWeights", Below(2) == 0);
      case 3:
      case 4:
        return SetCell(form_.passData, 5);
      case 5:
        return SetCell(form_.delayData, 3);
      case 6:
        return ClearGrid(program_.windows.grids,
                         Below(4) == 0 ? static_cast<GridView&>(form_.passData) : form_.delayData);
      case 7:
        return Below(2) == 0 ? UseSolverDefaults(form_) : EditSolverDefaults(form_);
      case 8:
        SetPoints(program_.document.record, Below(30));
        return GetAnswers(program_);
      case 9:
        return TakeCure();
      case 10:
        return FillTable();
      default:
        return EditTable();
    }
  }

  void SetCell(FakeGrid& grid, int columns) {
    grid.SetText(1 + Below(grid.RowCount() - 1), 1 + Below(columns - 1),
                 Below(4) == 0 ? "" : std::to_string(Below(1000)));
  }

  void TakeCure() {
    FormCells cells = CellsOf(program_);
    const FindingTable table = Below(3) == 0 ? FindingTable::delay : FindingTable::passband;
    const auto cure = static_cast<Cure>(1 + Below(static_cast<int>(Cure::fitList)));
    ApplyCure(cells, {{.question = cure == Cure::fitList ? "8" : "", .table = table, .column = 1},
                      Severity::warning,
                      "",
                      cure});
    ShowCells(program_, cells);
  }

  void FillTable() {
    FormCells cells = CellsOf(program_);
    Fill fill = {static_cast<FillColumn>(Below(6)), "row + " + std::to_string(Below(99)), {}};
    if (Below(2) == 0) fill.grid = {1, 9, 1 + Below(20), false};
    const FilledColumn filled = CalculateFill(cells.typed, fill);
    if (filled.fault.empty()) PutFill(cells.typed, fill, filled);
    ShowCells(program_, cells);
  }

  void EditTable() {
    FormCells cells = CellsOf(program_);
    const Table table = Below(2) == 0 ? Table::passband : Table::delay;
    const int row = 1 + Below(8);
    const CellBlock block{row, row + Below(5), 1, 2};
    switch (Below(6)) {
      case 0:
        DeleteRows(cells, table, block.firstRow, block.lastRow);
        break;
      case 1:
        InsertRows(cells, table, block);
        break;
      case 2:
        FillDown(cells, table, block);
        break;
      case 3:
        SortByFrequency(cells, table);
        break;
      case 4:
        KeepTypedRows(cells, table);
        break;
      default:
        Paste(cells, table, row, 1, "1\t2\r\n3\t4\r\n5\t6\r\n");
    }
    ShowCells(program_, cells);
  }

  ScriptedHost& host_;
  Program& program_;
  FakeForm& form_;
  std::mt19937 random_{7};
};

TEST_F(HistoryTest, AThousandEditsAreUndoneToTheFirstStateAndDoneAgainToTheLast) {
  History history(program, {2000, History::Limits().bytes});
  Walk walk(*this);
  std::vector<FormCells> cells = {CellsOf(program)};
  std::vector<ResponseRecord> records = {RecordOf(program)};
  for (int edit = 0; edit < 1000; ++edit) {
    const StepKind kind = walk.Step();
    if (!history.Record("edit", kind)) continue;
    cells.push_back(CellsOf(program));
    records.push_back(RecordOf(program));
  }
  ASSERT_GT(cells.size(), 600U);
  for (std::size_t at = cells.size() - 1; at > 0; --at) {
    ASSERT_TRUE(history.CanUndo());
    program.document.DataChanged = 0;
    history.Undo();
    ASSERT_EQ(CellsOf(program), cells[at - 1]) << at;
    if (at % 7 == 0) {
      ASSERT_TRUE(RecordOf(program) == records[at - 1]) << at;
    }
    ASSERT_EQ(program.document.DataChanged, 1);
  }
  EXPECT_FALSE(history.CanUndo());
  for (std::size_t at = 1; at < cells.size(); ++at) {
    history.Redo();
    ASSERT_EQ(CellsOf(program), cells[at]) << at;
    if (at % 7 == 0) {
      ASSERT_TRUE(RecordOf(program) == records[at]) << at;
    }
  }
  EXPECT_FALSE(history.CanRedo());
}

TEST_F(HistoryTest, StepsHaveNamesAndPlacesAndANewOneEndsWhatCouldBeDoneAgain) {
  History history(program);
  EXPECT_FALSE(history.Record("nothing"));
  form.passData.SetText(3, 2, "x");
  history.Record("Edit Cell");
  form.SetText("nZquads", "2");
  history.Record("Answer 11");
  EXPECT_EQ(history.Undo(), (FormPlace{"nZquads"}));
  EXPECT_EQ(history.UndoName() + ", " + history.RedoName(), "Edit Cell, Answer 11");
  EXPECT_EQ(history.Undo(), (FormPlace{"PassData", 3, 2}));
  EXPECT_EQ(form.passData.Text(3, 2), "3.2");
  EXPECT_EQ(history.Redo(), (FormPlace{"PassData", 3, 2}));
  form.SetText("tmin", "5");
  history.Record("Answer 1a");
  EXPECT_FALSE(history.CanRedo());
  EXPECT_TRUE(form.IsEnabled("Zreal") == false) << "the rules follow the counts";
}

TEST_F(HistoryTest, TheOldestStepsGoAndTheLastOneStays) {
  History few(program, {3, History::Limits().bytes});
  History small(program, {100, 1});
  for (int i = 0; i < 5; ++i) {
    form.SetText("tmin", std::to_string(i));
    few.Record("edit");
    small.Record("edit");
  }
  for (int i = 0; i < 3; ++i) few.Undo();
  EXPECT_FALSE(few.CanUndo());
  EXPECT_EQ(form.Text("tmin"), "1");
  form.SetText("tmin", "4");
  small.Undo();
  EXPECT_FALSE(small.CanUndo());
  EXPECT_EQ(form.Text("tmin"), "3");
}

TEST_F(HistoryTest, OnlyAStepThatReplacesTheDocumentGivesTheFormerFileBack) {
  program.files = {"one", user, "one", user};
  History history(program);
  form.SetText("tmin", "1");
  history.Record("edit");
  program.files.currentFileName = "saved as";
  host.MakeFolder(host.Path("other"));
  program.files.currentFolder = host.Path("other");
  program.document.record.nFreqPoints = 4;
  history.Record("Save As", StepKind::takesForm);
  EXPECT_EQ(history.UndoName(), "edit");
  const Files saved = program.files;
  SetPoints(program.document.record, 2);
  GetAnswers(program);
  program.files = {"two", user, "two", user};
  history.Record("Open", StepKind::replacesDocument);
  history.Undo();
  EXPECT_EQ(program.files, saved);
  EXPECT_EQ(host.CurrentFolder(), saved.currentFolder) << "Save looks for the file there";
  history.Undo();
  EXPECT_EQ(program.files, saved) << "an edit undone leaves the names";
}

}  // namespace
}  // namespace polefit::testing

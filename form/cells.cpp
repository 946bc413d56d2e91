#include "form/cells.h"

#include <algorithm>
#include <cstddef>

#include "form/field_rules.h"
#include "form/transfer.h"
#include "grids/grid_routines.h"
#include "responsefile/writer.h"

namespace polefit {

namespace {

std::optional<EditedCell> EditedCellOf(const GridState& grids) {
  if (!grids.txtCellEditor.IsVisible()) return std::nullopt;
  return EditedCell{grids.CurrentGrid == &grids.DelayData, grids.editedRow, grids.editedColumn,
                    grids.txtCellEditor.Text()};
}

void ShowZeroCountBoxes(FormView& form, const FormCells& cells) {
  std::size_t box = 0;
  for (const std::string& text : cells.zeroCounts) {
    const std::string_view name = BoxName(slot::kZeroCounts, box++);
    form.SetText(name, text);
    ApplyRuleOf(form, name);
  }
}

/// The text of an open editor in its cell.
void CommitEditedCell(FormCells& cells) {
  if (!cells.editor) return;
  const auto put = [&edited = *cells.editor](auto& points) {
    if (edited.row >= points.RowsOf(1)) points.KeepRows(edited.row + 1);
    points.At(edited.row, edited.column) = edited.text;
  };
  if (cells.editor->isDelay) {
    put(cells.typed.delay);
  } else {
    put(cells.typed.passband);
  }
  cells.editor.reset();
}

/// The record with as many rows as its counts say.
ResponseRecord WithCountedRows(const ResponseRecord& typed) {
  constexpr std::int16_t kNone = 0;
  ResponseRecord record = WithoutRows(typed);
  record.passband = typed.passband;
  record.passband.KeepRows(std::max(typed.nFreqPoints, kNone) + 1);
  record.delay = typed.delay;
  record.delay.KeepRows(std::max(typed.nDelayPoints, kNone) + 1);
  DeriveCounts(record);
  return record;
}

/// A zero count too large for a double leaves the boxes that depend on it as they are, as it does
/// when it is typed.
void ShowRecord(Program& program) {
  try {
    GetAnswers(program);
  } catch (const RunTimeError& error) {
    if (error.number != error_number::kOverflow) throw;
  }
}

}  // namespace

FormCells CellsOf(const Program& program) {
  FormCells cells;
  ResponseRecord& typed = cells.typed;
  typed.LastFileName = program.document.record.LastFileName;
  typed.nFreqPoints = program.document.record.nFreqPoints;
  typed.nDelayPoints = program.document.record.nDelayPoints;
  TakeAnswers(program, typed);
  ReadAllRows(program.windows.grids, typed.passband, typed.delay);
  std::size_t box = 0;
  for (std::string& text : cells.zeroCounts) {
    text = program.windows.frmMain.Text(BoxName(slot::kZeroCounts, box++));
  }
  cells.editor = EditedCellOf(program.windows.grids);
  cells.files = program.files;
  cells.shownFileName = program.windows.frmMain.Text(kLastFileNameBox);
  return cells;
}

ResponseRecord WithoutRows(const ResponseRecord& typed) {
  ResponseRecord record;
  record.slots = typed.slots;
  record.Note1 = typed.Note1;
  record.Note2 = typed.Note2;
  record.LastFileName = typed.LastFileName;
  record.solver = typed.solver;
  record.nFreqPoints = typed.nFreqPoints;
  record.nDelayPoints = typed.nDelayPoints;
  return record;
}

bool EnterCurrentFolder(Program& program) {
  try {
    program.host.ChangeFolder(program.files.currentFolder);
    return true;
  } catch (const RunTimeError&) {
    return false;
  }
}

void ShowCells(Program& program, const FormCells& shown) {
  FormCells cells = shown;
  CommitEditedCell(cells);
  GridState& grids = program.windows.grids;
  const int passRow = grids.PassData.CurrentRow();
  const int delayRow = grids.DelayData.CurrentRow();
  program.files = cells.files;
  program.document.record = WithCountedRows(cells.typed);
  ShowRecord(program);
  FillRowsBehindPoints(grids, cells.typed.passband, cells.typed.delay);
  ShowZeroCountBoxes(program.windows.frmMain, cells);
  program.windows.frmMain.SetText(kLastFileNameBox, cells.shownFileName);
  grids.PassData.SetCurrentRow(std::min(passRow, grids.PassData.RowCount() - 1));
  grids.DelayData.SetCurrentRow(std::min(delayRow, grids.DelayData.RowCount() - 1));
  program.document.DataChanged = 1;
}

}  // namespace polefit

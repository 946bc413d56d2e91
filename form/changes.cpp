#include "form/changes.h"

#include <optional>

#include "base/digest.h"
#include "base/text.h"
#include "form/transfer.h"

namespace polefit {

namespace {

template <typename Points>
void AddRows(Digest& digest, const Points& points, int rows) {
  for (int row = 1; row <= rows; ++row) {
    for (int column = 1; column <= Points::kColumns; ++column) {
      digest.Add(TrimBlanks(points.At(row, column)));
    }
  }
}

template <typename Points>
bool IsEmptyRow(const Points& points, int row) {
  for (int column = 1; column <= Points::kColumns; ++column) {
    if (!TrimBlanks(points.At(row, column)).empty()) return false;
  }
  return true;
}

template <typename Points>
int LastTypedRow(const Points& points) {
  int row = points.RowsOf(1) - 1;
  while (row > 0 && IsEmptyRow(points, row)) --row;
  return row;
}

void AddAnswers(Digest& digest, const ResponseRecord& record) {
  for (const Question& question : kQuestions) digest.Add(record.Slot(question.slot));
  digest.Add(record.Note1);
  digest.Add(record.Note2);
}

/// Of the record that a save would write; nothing when it could not be written.
std::optional<std::uint64_t> SaveDigest(const Program& program) {
  try {
    const ResponseRecord record = RecordOf(program);
    Digest digest;
    AddAnswers(digest, record);
    AddRows(digest, record.passband, record.nFreqPoints);
    digest.Add("");
    AddRows(digest, record.delay, record.nDelayPoints);
    for (int i = 0; i < record.solverCount; ++i) {
      digest.Add(record.solver.at(static_cast<std::size_t>(i)));
    }
    return digest.Value();
  } catch (const RunTimeError&) {
    return std::nullopt;
  }
}

template <typename Points>
void AddOpenCell(Digest& digest, const EditedCell& edited, const Points& points) {
  const bool isInRow = edited.row < points.RowsOf(1) && edited.column <= Points::kColumns;
  const std::string held = isInRow ? points.At(edited.row, edited.column) : std::string();
  if (TrimBlanks(edited.text) != TrimBlanks(held)) digest.Add(edited.text);
}

std::uint64_t CellsDigest(const FormCells& cells) {
  Digest digest;
  AddAnswers(digest, cells.typed);
  for (const std::string& value : cells.typed.solver) digest.Add(value);
  for (const std::string& text : cells.zeroCounts) digest.Add(text);
  AddRows(digest, cells.typed.passband, LastTypedRow(cells.typed.passband));
  digest.Add("");
  AddRows(digest, cells.typed.delay, LastTypedRow(cells.typed.delay));
  if (cells.editor && cells.editor->isDelay) AddOpenCell(digest, *cells.editor, cells.typed.delay);
  if (cells.editor && !cells.editor->isDelay) {
    AddOpenCell(digest, *cells.editor, cells.typed.passband);
  }
  return digest.Value();
}

}  // namespace

bool Differs(const Program& program) {
  return SaveDigest(program) != program.document.left.save;
}

bool HasUnsavedCells(const Program& program, const FormCells& cells) {
  return CellsDigest(cells) != program.document.left.cells;
}

void NoteShown(Program& program) {
  program.document.isSubmitted = false;
  program.document.left = {SaveDigest(program), CellsDigest(CellsOf(program))};
}

void NoteSaved(Program& program) {
  FormCells saved = CellsOf(program);
  const ResponseRecord record = RecordOf(program);
  saved.typed.passband = record.passband;
  saved.typed.delay = record.delay;
  saved.editor.reset();
  program.document.left = {SaveDigest(program), CellsDigest(saved)};
}

}  // namespace polefit

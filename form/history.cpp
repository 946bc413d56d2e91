#include "form/history.h"

#include <algorithm>
#include <utility>

#include "record/question_catalogue.h"

namespace polefit {

namespace {

FormCells CommittedCells(const Program& program) {
  FormCells cells = CellsOf(program);
  cells.editor.reset();
  return cells;
}

template <std::size_t Columns>
std::array<std::string, Columns> RowOf(const PointLists<Columns>& points, int row) {
  std::array<std::string, Columns> cells;
  for (std::size_t i = 0; i < Columns; ++i) cells[i] = points.At(row, static_cast<int>(i) + 1);
  return cells;
}

template <std::size_t Columns>
std::vector<std::array<std::string, Columns>> RowsOf(const PointLists<Columns>& points, int first,
                                                     int end) {
  std::vector<std::array<std::string, Columns>> rows;
  for (int row = first; row < end; ++row) rows.push_back(RowOf(points, row));
  return rows;
}

template <std::size_t Columns>
bool AreEqual(const PointLists<Columns>& a, int rowOfA, const PointLists<Columns>& b, int rowOfB) {
  for (int column = 1; column <= a.kColumns; ++column) {
    if (a.At(rowOfA, column) != b.At(rowOfB, column)) return false;
  }
  return true;
}

/// The state without the rows of the tables, which a step keeps by their differences.
FormCells RestOf(const FormCells& cells) {
  FormCells rest;
  rest.zeroCounts = cells.zeroCounts;
  rest.files = cells.files;
  rest.shownFileName = cells.shownFileName;
  rest.typed = WithoutRows(cells.typed);
  return rest;
}

/// The names of the files as `from` has them.
void TakeNames(FormCells& cells, const FormCells& from) {
  cells.files = from.files;
  cells.shownFileName = from.shownFileName;
  cells.typed.LastFileName = from.typed.LastFileName;
}

/// Counts alone change when the form is taken for a save, which is no step.
bool IsEdited(FormCells before, const FormCells& after) {
  ResponseRecord& typed = before.typed;
  typed.nFreqPoints = after.typed.nFreqPoints;
  typed.nDelayPoints = after.typed.nDelayPoints;
  for (const int count : {slot::kFreqPointCount, slot::kDelayPointCount}) {
    typed.Slot(count) = after.typed.Slot(count);
  }
  return before != after;
}

std::size_t TextBytes(const FormCells& cells) {
  std::size_t bytes = sizeof(FormCells);
  for (const std::string& slot : cells.typed.slots) bytes += slot.capacity();
  for (const std::string& value : cells.typed.solver) bytes += value.capacity();
  return bytes + cells.typed.Note1.capacity() + cells.typed.Note2.capacity();
}

/// The first control outside of the tables whose contents differ, or "".
std::string ChangedControl(const FormCells& a, const FormCells& b) {
  for (const Question& question : kQuestions) {
    if (question.kind == AnswerKind::counts) continue;
    const bool isSame = a.typed.Slot(question.slot) == b.typed.Slot(question.slot);
    if (!isSame) return std::string(question.boxes[0].name);
  }
  for (std::size_t box = 0; box < a.zeroCounts.size(); ++box) {
    if (a.zeroCounts[box] != b.zeroCounts[box]) return std::string(BoxName(slot::kZeroCounts, box));
  }
  for (const NoteBox& note : kNoteBoxes) {
    if (a.typed.*note.field != b.typed.*note.field) return std::string(note.name);
  }
  for (std::size_t i = 0; i < kSolverQuestions.size(); ++i) {
    if (a.typed.solver[i] != b.typed.solver[i]) return std::string(kSolverQuestions[i].name);
  }
  return {};
}

}  // namespace

template <std::size_t Columns>
History::RowsChange<Columns> History::RowsChange<Columns>::Between(
    const PointLists<Columns>& before, const PointLists<Columns>& after) {
  int endBefore = before.RowsOf(1);
  int endAfter = after.RowsOf(1);
  int first = 1;
  while (first < std::min(endBefore, endAfter) && AreEqual(before, first, after, first)) ++first;
  while (endBefore > first && endAfter > first &&
         AreEqual(before, endBefore - 1, after, endAfter - 1)) {
    --endBefore;
    --endAfter;
  }
  return {first, RowsOf(before, first, endBefore), RowsOf(after, first, endAfter)};
}

template <std::size_t Columns>
PointLists<Columns> History::RowsChange<Columns>::Applied(const PointLists<Columns>& points,
                                                          bool isUndo) const {
  const std::vector<Row>& leaving = isUndo ? after : before;
  const std::vector<Row>& coming = isUndo ? before : after;
  if (leaving.empty() && coming.empty()) return points;
  const int left = static_cast<int>(leaving.size());
  const int came = static_cast<int>(coming.size());
  PointLists<Columns> result;
  result.Resize(points.RowsOf(1) + came - left);
  for (int row = 1; row < result.RowsOf(1); ++row) {
    const bool isNew = row >= firstRow && row < firstRow + came;
    const int source = row < firstRow ? row : row + left - came;
    for (std::size_t i = 0; i < Columns; ++i) {
      const int column = static_cast<int>(i) + 1;
      result.At(row, column) =
          isNew ? coming[static_cast<std::size_t>(row - firstRow)][i] : points.At(source, column);
    }
  }
  return result;
}

template <std::size_t Columns>
std::size_t History::RowsChange<Columns>::Bytes() const {
  std::size_t bytes = sizeof(Row) * (before.capacity() + after.capacity());
  for (const auto* rows : {&before, &after}) {
    for (const Row& row : *rows) {
      for (const std::string& cell : row) bytes += cell.capacity() > 15 ? cell.capacity() : 0;
    }
  }
  return bytes;
}

History::History(Program& program) : History(program, Limits()) {}

History::History(Program& program, Limits limits) : program_(program), limits_(limits) {
  Forget();
}

void History::Forget() {
  steps_.clear();
  done_ = 0;
  state_ = CommittedCells(program_);
}

bool History::Record(const std::string& name, StepKind kind) {
  FormCells now = CommittedCells(program_);
  // What saved the data under another name is no step that could be undone.
  if (kind != StepKind::replacesDocument) TakeNames(state_, now);
  const bool isChanged = kind == StepKind::takesForm ? IsEdited(state_, now) : now != state_;
  if (!isChanged) {
    state_ = std::move(now);
    return false;
  }
  steps_.erase(steps_.begin() + static_cast<std::ptrdiff_t>(done_), steps_.end());
  steps_.push_back({name, kind, RestOf(state_), RestOf(now),
                    decltype(Step::passband)::Between(state_.typed.passband, now.typed.passband),
                    decltype(Step::delay)::Between(state_.typed.delay, now.typed.delay)});
  state_ = std::move(now);
  done_ = steps_.size();
  DropOldSteps();
  return true;
}

void History::DropOldSteps() {
  std::size_t bytes = Bytes();
  while (steps_.size() > 1 && (steps_.size() > limits_.steps || bytes > limits_.bytes)) {
    bytes -= steps_.front().Bytes();
    steps_.pop_front();
  }
  done_ = steps_.size();
}

FormPlace History::Undo() {
  if (!CanUndo()) return {};
  const Step& step = steps_[--done_];
  Show(step, true);
  return step.Place(true);
}

FormPlace History::Redo() {
  if (!CanRedo()) return {};
  const Step& step = steps_[done_++];
  Show(step, false);
  return step.Place(false);
}

void History::Show(const Step& step, bool isUndo) {
  FormCells shown = isUndo ? step.before : step.after;
  shown.typed.passband = step.passband.Applied(state_.typed.passband, isUndo);
  shown.typed.delay = step.delay.Applied(state_.typed.delay, isUndo);
  if (step.kind != StepKind::replacesDocument) TakeNames(shown, CellsOf(program_));
  ShowCells(program_, shown);
  if (step.kind == StepKind::replacesDocument) EnterCurrentFolder(program_);
  state_ = CommittedCells(program_);
}

std::size_t History::Bytes() const {
  std::size_t bytes = 0;
  for (const Step& step : steps_) bytes += step.Bytes();
  return bytes;
}

std::size_t History::Step::Bytes() const {
  return TextBytes(before) + TextBytes(after) + passband.Bytes() + delay.Bytes();
}

FormPlace History::Step::Place(bool isUndo) const {
  const auto changedRow = [isUndo](const auto& change) {
    const bool isEmpty = change.before.empty() && change.after.empty();
    const bool isGone = (isUndo ? change.before : change.after).empty();
    return isEmpty ? 0 : std::max(1, change.firstRow - (isGone ? 1 : 0));
  };
  const auto changedColumn = [](const auto& change) {
    if (change.before.size() != 1 || change.after.size() != 1) return 1;
    const auto [a, b] =
        std::mismatch(change.before[0].begin(), change.before[0].end(), change.after[0].begin());
    return static_cast<int>(a - change.before[0].begin()) + 1;
  };
  if (kind == StepKind::replacesDocument) return {};
  if (const int row = changedRow(passband)) return {"PassData", row, changedColumn(passband)};
  if (const int row = changedRow(delay)) return {"DelayData", row, changedColumn(delay)};
  return {ChangedControl(before, after)};
}

}  // namespace polefit

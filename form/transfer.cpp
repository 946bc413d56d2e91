#include "form/transfer.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "base/number.h"
#include "base/text.h"
#include "form/field_rules.h"
#include "form/solver_settings.h"
#include "grids/cell_editor.h"
#include "grids/grid_routines.h"
#include "record/question_catalogue.h"
#include "responsefile/writer.h"

namespace polefit {

namespace {

std::string TakeAnswer(const FormView& form, const Question& question) {
  if (question.kind == AnswerKind::flag) return form.IsChecked(question.boxes[0].name) ? "Y" : "N";
  std::string answer;
  for (const AnswerBox& box : question.Boxes()) {
    if (&box != question.boxes.data()) answer += ' ';
    answer += form.Text(box.name);
  }
  return answer;
}

void ShowAnswer(FormView& form, const Question& question, const std::string& answer) {
  if (question.kind == AnswerKind::flag) {
    form.SetChecked(question.boxes[0].name, IsYes(answer));
  } else if (question.kind != AnswerKind::counts) {
    form.SetText(question.boxes[0].name, answer);
  }
}

/// Splits the zero counts at every single blank; pieces after the third are ignored. Kept: two
/// blanks together leave a box empty, and fewer than three pieces are an error.
void ShowZeroCounts(FormView& form, const std::string& answer) {
  const std::size_t index = slot::kZeroCounts - 1;
  std::string_view rest = answer.empty() ? std::string_view("0 0 0") : answer;
  bool ended = false;
  for (const AnswerBox& box : kQuestions.at(index).Boxes()) {
    if (ended) throw MakeRunTimeError(error_number::kSubscriptOutOfRange);
    const std::size_t blank = rest.find(' ');
    form.SetText(box.name, std::string(rest.substr(0, blank)));
    ended = blank == std::string_view::npos;
    if (!ended) rest.remove_prefix(blank + 1);
  }
}

/// A line of the file loses the blanks at its beginning, and empty counts there with them.
bool CanBeShownAgain(std::string_view zeroCounts) {
  const std::size_t first = std::min(zeroCounts.find_first_not_of(' '), zeroCounts.size());
  const std::string_view read = zeroCounts.substr(first);
  return read.empty() || std::ranges::count(read, ' ') >= 2;
}

void ResetGrids(Program& program) {
  GridState& grids = program.windows.grids;
  ResponseRecord& record = program.document.record;
  ClearGrid(grids, grids.PassData);
  record.nFreqPoints = ToInteger16(ReadNumber(record.Slot(slot::kFreqPointCount)));
  ClearGrid(grids, grids.DelayData);
  record.nDelayPoints = ToInteger16(ReadNumber(record.Slot(slot::kDelayPointCount)));
}

/// Takes the whole form into `record`, whose counts are those of the grids so far.
void TakeForm(const Program& program, ResponseRecord& record) {
  // Kept: after a demo the name stays as it was until the next submit.
  if (program.document.RunMode != "Demo") record.LastFileName = program.files.currentFileName;
  TakeAnswers(program, record);
  ReadGrids(program.windows.grids, record);
}

}  // namespace

std::string EmptyCountNote(const std::array<std::string, 3>& counts) {
  const auto isEmpty = [](const std::string& count) { return TrimBlanks(count).empty(); };
  if (std::ranges::none_of(counts, isEmpty)) return {};
  const bool canBeOpened = CanBeShownAgain(counts[0] + ' ' + counts[1] + ' ' + counts[2]);
  return std::string("A count is empty: the solver will refuse the run") +
         (canBeOpened ? "" : ", and the saved file cannot be opened again") + ". Type 0 for none.";
}

void TakeAnswers(const Program& program, ResponseRecord& record) {
  const FormView& form = program.windows.frmMain;
  for (const Question& question : kQuestions) {
    record.Slot(question.slot) = TakeAnswer(form, question);
  }
  record.Slot(slot::kFreqPointCount) = SignedText(record.nFreqPoints);
  record.Slot(slot::kDelayPointCount) = SignedText(record.nDelayPoints);
  for (const NoteBox& note : kNoteBoxes) record.*note.field = form.Text(note.name);
  PutSolvAnswers(form, record);
}

void PutAnswers(Program& program) {
  HideCellEditor(program.windows.grids, false);
  TakeForm(program, program.document.record);
}

ResponseRecord RecordOf(const Program& program) {
  const ResponseRecord& shown = program.document.record;
  ResponseRecord record;
  record.LastFileName = shown.LastFileName;
  record.nFreqPoints = shown.nFreqPoints;
  record.nDelayPoints = shown.nDelayPoints;
  TakeForm(program, record);
  // How many spare rows the grids have is no part of it.
  record.passband.KeepRows(std::max<int>(record.nFreqPoints, 0) + 1);
  record.delay.KeepRows(std::max<int>(record.nDelayPoints, 0) + 1);
  DeriveCounts(record);
  return record;
}

void GetAnswers(Program& program) {
  FormView& form = program.windows.frmMain;
  const ResponseRecord& record = program.document.record;
  for (const Question& question : kQuestions) {
    ShowAnswer(form, question, record.Slot(question.slot));
  }
  ShowZeroCounts(form, record.Slot(slot::kZeroCounts));
  ResetGrids(program);
  for (const NoteBox& note : kNoteBoxes) form.SetText(note.name, record.*note.field);
  form.SetText(kLastFileNameBox, record.LastFileName);
  FillGrids(program.windows.grids, record.passband, record.delay);
  GetSolvAnswers(form, record);
  // Every text shown has raised its change notification; the record just shown is unchanged.
  program.document.DataChanged = 0;
  ShowWeightColumn(program.windows.grids, form.IsChecked(BoxName(slot::kUseWeights)));
  ApplyFieldRules(form);
}

}  // namespace polefit

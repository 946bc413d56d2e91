#include "exchange/import/import_plan.h"

#include <algorithm>
#include <utility>

#include "base/number.h"

namespace polefit {

namespace {

/// What the points are points of: a parameter, a heading or a column's number.
std::string SubjectOf(const SourceTable& table, int column, std::string_view parameter) {
  const std::string wanted = BareName(parameter);
  std::string subject;
  for (const NetworkParameter& one : table.parameters) {
    // Half a matrix has two names for one column: the one that was meant is told.
    const bool isMeant = wanted.empty() ? one.name.ends_with("21") : BareName(one.name) == wanted;
    if (one.column == column && (subject.empty() || isMeant)) subject = one.name;
  }
  if (!subject.empty() || column == kNoColumn) return subject;
  const std::string& heading = table.columns[static_cast<std::size_t>(column)].heading;
  return heading.empty() ? "column " + std::to_string(column + 1) : heading;
}

/// A form that names no file, or has no points, may as well begin anew.
bool IsFresh(const FormCells& form) {
  const std::string& name = form.files.currentFileName;
  return name.empty() || name == "Start Up Values" || form.typed.nFreqPoints < 1;
}

TakenColumns TakenBy(const ImportPlan& plan) {
  const Role role = plan.choices.role;
  const bool hasOther = plan.choices.other.column != kNoColumn || !plan.keepsOther;
  return {role != Role::want || hasOther, role != Role::equalise || hasOther,
          plan.choices.weight != kNoColumn};
}

std::vector<PassbandCells> CountedRows(const FormCells& form) {
  return RowsOf(form.typed);
}

std::string Replaced(const ImportPlan& plan, const FormCells& form) {
  const int rows = form.typed.nFreqPoints;
  if (rows < 1) return {};
  if (plan.startsProblem || plan.frequencies == Frequencies::file) {
    return "; replaces " + std::to_string(rows) + " rows";
  }
  return plan.frequencies == Frequencies::table ? "; into " + std::to_string(rows) + " rows"
                                                : "; added to " + std::to_string(rows) + " rows";
}

Points PointsOf(const ImportPlan& plan) {
  ImportChoices choices = plan.choices;
  const bool hasDelay = choices.delaySource != DelaySource::none;
  choices.delaySource = DelaySource::none;
  Points points = MakePoints(plan.source.table, choices);
  if (!hasDelay) return points;
  if (plan.delaySource.table.Columns() > 0) {
    ImportChoices other = plan.delayChoices;
    other.rows = choices.rows;
    other.role = choices.role;
    TakeDelays(plan.delaySource.table, other, points);
  } else {
    TakeDelays(plan.source.table, plan.choices, points);
  }
  return points;
}

/// The rows behind the counted ones go on behind the new ones.
template <typename Lists, typename Cells>
void ReplaceRows(const std::vector<Cells>& rows, int counted, Lists& lists) {
  const int behind = std::max(0, lists.RowsOf(1) - 1 - std::max(counted, 0));
  const auto fresh = static_cast<int>(rows.size());
  Lists merged;
  merged.Resize(fresh + behind + 1);
  for (int column = 1; column <= Lists::kColumns; ++column) {
    for (int row = 1; row <= fresh; ++row) {
      merged.At(row, column) =
          rows[static_cast<std::size_t>(row) - 1].at(static_cast<std::size_t>(column) - 1);
    }
    for (int row = 1; row <= behind; ++row) {
      merged.At(fresh + row, column) = lists.At(std::max(counted, 0) + row, column);
    }
  }
  lists = std::move(merged);
}

}  // namespace

ImportPlan PlanFor(SourceFile source, const FormCells& form) {
  ImportPlan plan;
  plan.source = std::move(source);
  plan.startsProblem = IsFresh(form);
  ChangeRole(plan, Role::model);
  return plan;
}

void ChangeRole(ImportPlan& plan, Role role) {
  const RowChoices rows = plan.choices.rows;
  const Guess guess = GuessChoices(plan.source.table, role);
  const DelaySource delay = plan.choices.delaySource;
  plan.choices = guess.choices;
  plan.choices.rows = rows;
  plan.choices.delaySource = delay;
  plan.isKindUnsure = guess.isKindUnsure;
  plan.keepsOther = role == Role::want && !plan.startsProblem;
}

void TakeDelayFrom(ImportPlan& plan, SourceFile source) {
  // The points of a Response Input File and its delay points are two tables.
  if (source.table.kind == FileKind::responseFile) source.table = source.delays;
  plan.delaySource = std::move(source);
  plan.delayChoices = GuessChoices(plan.delaySource.table, plan.choices.role).choices;
  const bool isColumn = ColumnOfQuantity(plan.delaySource.table, Quantity::delay) != kNoColumn;
  plan.delayChoices.delaySource = isColumn ? DelaySource::column : DelaySource::phase;
  plan.delayChoices.value = {};
  plan.choices.delaySource = plan.delayChoices.delaySource;
}

ImportPreview PreviewOf(const ImportPlan& plan, const FormCells& form) {
  ImportPreview preview;
  preview.points = PointsOf(plan);
  preview.reason = preview.points.fault;
  if (preview.reason.empty() && plan.isKindUnsure) {
    preview.reason = "All values are above 3: choose what they are.";
  }
  if (preview.points.passband.empty()) return preview;
  if (plan.startsProblem) {
    preview.rows = CellsOfPoints(preview.points.passband);
  } else {
    MergedTable merged =
        Merge(CountedRows(form), preview.points.passband, TakenBy(plan), plan.frequencies);
    preview.rows = std::move(merged.rows);
  }
  if (preview.reason.empty() && preview.rows.size() < 2) {
    preview.reason = "Fewer than 2 rows are left.";
  }
  preview.problem = LookAtPoints(preview.points.passband);
  if (plan.startsProblem) preview.answers = AnswersOf(preview.problem);
  if (plan.choices.weight != kNoColumn) preview.answers.push_back({"3", "Y"});
  if (!preview.points.delays.empty()) {
    preview.answers.push_back({"1", "Y"});
    preview.answers.push_back({"1a", "0"});
  }
  preview.summary = SummaryOf(preview.points, plan.choices.role) + Replaced(plan, form);
  return preview;
}

FormCells Imported(const ImportPlan& plan, const ImportPreview& preview, FormCells form,
                   const std::string& date) {
  ResponseRecord& typed = form.typed;
  if (plan.startsProblem) {
    StartProblem(preview.problem, PointsNote(plan.source, plan.choices, plan.parameter, date), "",
                 typed);
    form.zeroCounts = {std::to_string(preview.problem.nulls), "0", "0"};
  }
  ReplaceRows(preview.rows, typed.nFreqPoints, typed.passband);
  typed.nFreqPoints = ToInteger16(static_cast<double>(preview.rows.size()));
  typed.Slot(slot::kFreqPointCount) = SignedText(typed.nFreqPoints);
  if (plan.choices.weight != kNoColumn) typed.Slot(slot::kUseWeights) = "Y";
  if (preview.points.delays.empty()) return form;
  const std::vector<DelayCells> delays = CellsOfPoints(preview.points.delays);
  ReplaceRows(delays, typed.nDelayPoints, typed.delay);
  typed.nDelayPoints = ToInteger16(static_cast<double>(delays.size()));
  typed.Slot(slot::kDelayPointCount) = SignedText(typed.nDelayPoints);
  typed.Slot(slot::kEqualDelay) = "Y";
  typed.Slot(slot::kTmin) = "0";
  return form;
}

std::string PointsNote(const SourceFile& source, const ImportChoices& choices,
                       std::string_view parameter, const std::string& date) {
  std::string note = "Points of " + source.name + ", " +
                     SubjectOf(source.table, choices.value.column, parameter) + ", " + date;
  // A mark of a comment would cut the note, a tab would be lost.
  std::replace_if(
      note.begin(), note.end(), [](char c) { return c == '!' || c == '\t'; }, ' ');
  return note;
}

}  // namespace polefit

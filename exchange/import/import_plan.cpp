#include "exchange/import/import_plan.h"

#include <algorithm>
#include <utility>

#include "base/number.h"
#include "exchange/import/other_values.h"
#include "exchange/read/number_text.h"
#include "record/question_catalogue.h"

namespace polefit {

namespace {

/// So many points are proposed for a file with more rows than a table holds.
constexpr int kProposedPoints = 1000;

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

/// A form that names no file may as well begin anew.
bool IsFresh(const FormCells& form) {
  const std::string& name = form.files.currentFileName;
  return name.empty() || name == kStartUpValues || name == kNewData;
}

TakenColumns TakenBy(const ImportPlan& plan) {
  const Role role = plan.choices.role;
  const bool hasOther = plan.otherSource != OtherSource::table;
  return {role != Role::want || hasOther, role != Role::equalise || hasOther,
          plan.choices.weight != kNoColumn};
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

std::string ReplacedDelays(const FormCells& form) {
  const int rows = form.typed.nDelayPoints;
  return rows < 1 ? "" : "; replaces " + std::to_string(rows) + " delay rows";
}

/// What x in a formula is measured in: the form's answer, or what the points say it will be.
std::string NormOf(const ImportPlan& plan, const Points& points, const FormCells& form) {
  if (!plan.startsProblem) return form.typed.Slot(slot::kFreqNorm);
  std::vector<PassbandRow> rows = points.passband;
  for (PassbandRow& row : rows) row.yout = row.yin;
  return LookAtPoints(rows).freqNorm;
}

void TakeOther(const ImportPlan& plan, const FormCells& form, Points& points) {
  if (plan.choices.role != Role::equalise || points.passband.empty()) return;
  if (plan.otherSource == OtherSource::formula) {
    FillYout(plan.formula, NormOf(plan, points, form), points);
  }
  if (plan.otherSource == OtherSource::file) TakeYout(plan.otherFile, points);
}

Points DelaysOf(const ImportPlan& plan) {
  Points points;
  points.notes = plan.source.table.notes;
  ImportChoices choices = plan.choices;
  choices.value = {};
  TakeDelays(plan.source.table, choices, points);
  return points;
}

Points PointsOf(const ImportPlan& plan, const FormCells& form) {
  if (plan.isOnlyDelay) return DelaysOf(plan);
  ImportChoices choices = plan.choices;
  const bool hasDelay = choices.delaySource != DelaySource::none;
  choices.delaySource = DelaySource::none;
  Points points = MakePoints(plan.source.table, choices);
  TakeOther(plan, form, points);
  if (!hasDelay) return points;
  if (plan.isDelayFromFile) {
    ImportChoices other = plan.delayChoices;
    other.rows = choices.rows;
    other.role = choices.role;
    TakeDelays(plan.delayFile.table, other, points);
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

bool SetsFreqNorm(const ImportPlan& plan) {
  return plan.setsFreqNorm && !plan.startsProblem;
}

/// The ticks of the problem before, which would bring its delay, weights or zero into a new one.
std::vector<int> FormerTicks(const ImportPlan& plan, const Points& points, const FormCells& form) {
  std::vector<int> ticks;
  const auto add = [&](int slot, bool isTaken) {
    if (!isTaken && IsYes(form.typed.Slot(slot))) ticks.push_back(slot);
  };
  add(slot::kEqualDelay, !points.delays.empty());
  add(slot::kUseWeights, plan.choices.weight != kNoColumn);
  add(slot::kSigmaZeroWanted, false);
  return ticks;
}

void SayWhatIsProposed(const ImportPlan& plan, Points& points) {
  const int rows = plan.source.table.Rows();
  if (rows <= kMostPoints || plan.choices.rows.points == 0) return;
  points.notes.push_back(std::to_string(rows) + " rows are more than the " +
                         std::to_string(kMostPoints) + " that a table holds: means of them");
}

void PreviewRows(const ImportPlan& plan, const FormCells& form, ImportPreview& preview) {
  const std::vector<PassbandRow>& points = preview.points.passband;
  preview.rows = plan.startsProblem
                     ? CellsOfPoints(points)
                     : Merge(RowsOf(form.typed), points, TakenBy(plan), plan.frequencies).rows;
  if (preview.reason.empty() && preview.rows.size() < 2) {
    preview.reason = "Fewer than 2 rows are left.";
  }
  preview.problem = LookAtPoints(points);
  if (plan.startsProblem) {
    preview.answers = AnswersOf(preview.problem);
    for (const int tick : FormerTicks(plan, preview.points, form)) {
      preview.answers.push_back({std::string(QuestionNumber(tick)), "N"});
    }
    preview.answers.push_back(
        {"Note 1", PointsNote(plan.source, plan.choices, plan.parameter, plan.date)});
    if (!preview.problem.note.empty()) preview.points.notes.push_back(preview.problem.note);
  }
  if (SetsFreqNorm(plan)) preview.answers.push_back({"5", preview.problem.freqNorm});
  if (plan.choices.weight != kNoColumn) preview.answers.push_back({"3", "Y"});
  preview.summary = SummaryOf(preview.points, plan.choices.role) + Replaced(plan, form);
}

void PreviewDelays(const ImportPlan& plan, const FormCells& form, ImportPreview& preview) {
  preview.answers.push_back({"1", "Y"});
  preview.answers.push_back({"1a", "0"});
  preview.delayNote =
      plan.choices.role == Role::equalise
          ? "TX is the delay itself: the sum with that of H(s) becomes flat."
          : "TX is the largest delay minus the delay: H(s) gets the measured shape.";
  if (!preview.summary.empty()) preview.summary += "; ";
  preview.summary += DelaySummaryOf(preview.points) + ReplacedDelays(form);
}

}  // namespace

ImportPlan PlanFor(SourceFile source, const FormCells& form) {
  ImportPlan plan;
  plan.source = std::move(source);
  plan.startsProblem = IsFresh(form);
  if (plan.source.table.Rows() > kMostPoints) plan.choices.rows.points = kProposedPoints;
  ChangeRole(plan, Role::model);
  if (plan.source.delays.Rows() > 1) {
    // They are offered, not taken.
    SourceFile delays;
    delays.name = "its delay points";
    delays.table = plan.source.delays;
    TakeDelayFrom(plan, std::move(delays));
    plan.isDelayFromFile = false;
    plan.choices.delaySource = DelaySource::none;
  }
  return plan;
}

bool HasDelays(const SourceFile& source) {
  return source.delays.Rows() > 1 || ColumnOfQuantity(source.table, Quantity::delay) != kNoColumn;
}

ImportPlan DelayPlanFor(SourceFile source, const FormCells& form) {
  if (source.table.kind == FileKind::responseFile) source.table = source.delays;
  ImportPlan plan = PlanFor(std::move(source), form);
  plan.startsProblem = false;
  plan.isOnlyDelay = true;
  plan.isKindUnsure = false;
  plan.choices.delaySource = DelaySource::column;
  return plan;
}

void ChangeRole(ImportPlan& plan, Role role) {
  const RowChoices rows = plan.choices.rows;
  const Guess guess = GuessChoices(plan.source.table, role);
  const DelaySource delay = plan.choices.delaySource;
  plan.choices = guess.choices;
  plan.choices.rows = rows;
  plan.choices.delaySource = delay;
  plan.isKindUnsure = guess.isKindUnsure && !plan.isOnlyDelay;
  const bool keepsYin = role == Role::want && !plan.startsProblem;
  ChangeOther(plan, keepsYin ? OtherSource::table : OtherSource::one);
}

void ChangeOther(ImportPlan& plan, OtherSource source) {
  plan.otherSource = source;
  if (source != OtherSource::column) plan.choices.other = {};
  plan.frequencies = source == OtherSource::table ? Frequencies::table : Frequencies::file;
}

void TakeDelayFrom(ImportPlan& plan, SourceFile source) {
  // The points of a Response Input File and its delay points are two tables.
  if (source.table.kind == FileKind::responseFile) source.table = source.delays;
  plan.isDelayFromFile = true;
  plan.delayFile = std::move(source);
  plan.delayChoices = GuessChoices(plan.delayFile.table, plan.choices.role).choices;
  const bool isColumn = ColumnOfQuantity(plan.delayFile.table, Quantity::delay) != kNoColumn;
  plan.delayChoices.delaySource = isColumn ? DelaySource::column : DelaySource::phase;
  plan.delayChoices.value = {};
  plan.choices.delaySource = plan.delayChoices.delaySource;
}

bool AreFrequenciesOpen(const ImportPlan& plan, const ImportPreview& preview,
                        const FormCells& form) {
  if (plan.startsProblem || plan.isOnlyDelay || form.typed.nFreqPoints < 1) return false;
  const std::vector<PassbandCells> table = RowsOf(form.typed);
  const std::vector<PassbandRow>& points = preview.points.passband;
  return !std::equal(table.begin(), table.end(), points.begin(), points.end(),
                     [](const PassbandCells& row, const PassbandRow& point) {
                       return CellNumber(row[0], '.') == point.frequency.value;
                     });
}

ImportPreview PreviewOf(const ImportPlan& plan, const FormCells& form) {
  ImportPreview preview;
  preview.points = PointsOf(plan, form);
  preview.reason = preview.points.fault;
  if (preview.reason.empty() && plan.isKindUnsure) {
    preview.reason = "All values are above 3: choose what they are.";
  }
  SayWhatIsProposed(plan, preview.points);
  if (!preview.points.passband.empty()) PreviewRows(plan, form, preview);
  if (!preview.points.delays.empty()) PreviewDelays(plan, form, preview);
  return preview;
}

FormCells Imported(const ImportPlan& plan, const ImportPreview& preview, FormCells form) {
  ResponseRecord& typed = form.typed;
  if (plan.startsProblem) {
    for (const int tick : FormerTicks(plan, preview.points, form)) typed.Slot(tick) = "N";
    StartProblem(preview.problem, PointsNote(plan.source, plan.choices, plan.parameter, plan.date),
                 "", typed);
    form.zeroCounts = {std::to_string(preview.problem.nulls), "0", "0"};
  }
  if (!plan.isOnlyDelay) {
    ReplaceRows(preview.rows, typed.nFreqPoints, typed.passband);
    typed.nFreqPoints = ToInteger16(static_cast<double>(preview.rows.size()));
    typed.Slot(slot::kFreqPointCount) = SignedText(typed.nFreqPoints);
    if (plan.choices.weight != kNoColumn) typed.Slot(slot::kUseWeights) = "Y";
    if (SetsFreqNorm(plan)) typed.Slot(slot::kFreqNorm) = preview.problem.freqNorm;
  }
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

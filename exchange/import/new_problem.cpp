#include "exchange/import/new_problem.h"

#include <algorithm>
#include <cmath>

#include "base/number.h"
#include "exchange/import/samples.h"
#include "record/question_catalogue.h"

namespace polefit {

namespace {

const double kTenDecibels = std::pow(10, 10.0 / 20);
constexpr int kMostNulls = 3;

using Rows = std::vector<PassbandRow>;

double YoutAt(const Rows& rows, std::size_t index) {
  return rows[index].yout.value;
}

/// One side of a row, followed outwards until it has reached a height or a row is lower than the
/// row it began at.
class Flank {
 public:
  Flank(const Rows& rows, std::size_t row, int step, double height)
      : rows_(rows), at_(row), floor_(YoutAt(rows, row)), height_(height), step_(step) {}

  bool HasReached() const { return hasReached_; }
  /// One row further; false when there is none, or it is lower.
  bool Follow() {
    if (hasReached_) return true;
    at_ += static_cast<std::size_t>(step_);
    if (at_ >= rows_.size() || YoutAt(rows_, at_) < floor_) return false;
    hasReached_ = YoutAt(rows_, at_) > 0 && YoutAt(rows_, at_) >= height_;
    return true;
  }

 private:
  const Rows& rows_;
  std::size_t at_;
  double floor_;
  double height_;
  int step_;
  bool hasReached_ = false;
};

/// Whether the row is an inner minimum that lies 10 dB or more under a peak on both sides. Both are
/// followed in step, so that a long slope on one side costs nothing.
bool IsNull(const Rows& rows, std::size_t row) {
  if (row == 0 || row + 1 == rows.size()) return false;
  // Of equal lowest rows the first is the null.
  if (YoutAt(rows, row - 1) <= YoutAt(rows, row)) return false;
  const double height = YoutAt(rows, row) * kTenDecibels;
  Flank left(rows, row, -1, height);
  Flank right(rows, row, 1, height);
  while (!left.HasReached() || !right.HasReached()) {
    if (!left.Follow() || !right.Follow()) return false;
  }
  return true;
}

std::vector<std::size_t> NullsOf(const Rows& rows) {
  std::vector<std::size_t> nulls;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    if (IsNull(rows, row)) nulls.push_back(row);
  }
  return nulls;
}

std::size_t PassbandEnd(const Rows& rows, const std::vector<std::size_t>& nulls) {
  double largest = 0;
  for (const PassbandRow& row : rows) largest = std::max(largest, row.yout.value);
  const std::size_t last = nulls.empty() ? rows.size() - 1 : nulls.front();
  for (std::size_t row = last + 1; row-- > 0;) {
    if (YoutAt(rows, row) * kThreeDecibels >= largest) return row;
  }
  return last;
}

std::string DefaultOf(const Question& question) {
  if (question.kind == AnswerKind::flag) return "N";
  std::string answer;
  for (const AnswerBox& box : question.Boxes()) {
    if (&box != question.boxes.data()) answer += ' ';
    answer += box.defaultText;
  }
  return answer;
}

std::string ZeroCounts(int nulls) {
  return std::to_string(nulls) + " 0 0";
}

}  // namespace

ResponseRecord BuiltInAnswers() {
  ResponseRecord record;
  for (const Question& question : kQuestions) record.Slot(question.slot) = DefaultOf(question);
  for (const NoteBox& note : kNoteBoxes) record.*note.field = note.defaultText;
  record.passband.Resize(1);
  record.delay.Resize(1);
  record.Slot(slot::kFreqPointCount) = SignedText(0);
  record.Slot(slot::kDelayPointCount) = SignedText(0);
  return record;
}

NewProblem LookAtPoints(const std::vector<PassbandRow>& points) {
  NewProblem problem;
  const bool isPositive = std::all_of(points.begin(), points.end(),
                                      [](const PassbandRow& row) { return row.yout.value > 0; });
  problem.ipower = isPositive ? "1" : "0";
  const std::vector<std::size_t> nulls = NullsOf(points);
  const std::size_t end = PassbandEnd(points, nulls);
  problem.freqNorm = TextOf(points[end].frequency);
  const auto above =
      std::count_if(nulls.begin(), nulls.end(), [&](std::size_t row) { return row >= end; });
  if (above <= kMostNulls) {
    problem.nulls = static_cast<int>(above);
  } else {
    problem.note = std::to_string(above) + " minima look like nulls: question 11 is left at 0";
  }
  return problem;
}

void StartProblem(const NewProblem& problem, const std::string& note, const std::string& poles,
                  ResponseRecord& record) {
  record.Slot(slot::kIPower) = problem.ipower;
  record.Slot(slot::kFreqNorm) = problem.freqNorm;
  record.Slot(slot::kZeroCounts) = ZeroCounts(problem.nulls);
  record.Slot(slot::kGain) = "1";
  record.Slot(slot::kLowestXY) = ".005";
  record.Slot(slot::kMaxXY) = "4";
  for (const int empty : {slot::kSigmaPoles, slot::kPoleReal, slot::kPoleImag, slot::kYzero,
                          slot::kZreal, slot::kZimag}) {
    record.Slot(empty).clear();
  }
  if (!poles.empty()) record.Slot(slot::kNPoles) = poles;
  record.Note1 = note;
}

std::vector<SetAnswer> AnswersOf(const NewProblem& problem) {
  return {{"2", problem.ipower},   {"5", problem.freqNorm},
          {"7 to 9", "empty"},     {"11", ZeroCounts(problem.nulls)},
          {"11a to 11c", "empty"}, {"12", "1"},
          {"13", ".005"},          {"14", "4"}};
}

void PutRows(const std::vector<PassbandCells>& rows, ResponseRecord& record) {
  record.nFreqPoints = ToInteger16(static_cast<double>(rows.size()));
  record.Slot(slot::kFreqPointCount) = SignedText(record.nFreqPoints);
  record.passband.Resize(record.nFreqPoints + 1);
  for (int row = 1; row <= record.nFreqPoints; ++row) {
    const PassbandCells& cells = rows[static_cast<std::size_t>(row) - 1];
    for (int column = 1; column <= PassbandLists::kColumns; ++column) {
      record.passband.At(row, column) = cells.at(static_cast<std::size_t>(column) - 1);
    }
  }
}

void PutDelays(const std::vector<DelayCells>& rows, ResponseRecord& record) {
  record.nDelayPoints = ToInteger16(static_cast<double>(rows.size()));
  record.Slot(slot::kDelayPointCount) = SignedText(record.nDelayPoints);
  record.delay.Resize(record.nDelayPoints + 1);
  for (int row = 1; row <= record.nDelayPoints; ++row) {
    const DelayCells& cells = rows[static_cast<std::size_t>(row) - 1];
    record.delay.At(row, kFrequencyColumn) = cells[0];
    record.delay.At(row, kTxColumn) = cells[1];
  }
  record.Slot(slot::kEqualDelay) = "Y";
  record.Slot(slot::kTmin) = "0";
}

std::vector<PassbandCells> RowsOf(const ResponseRecord& record) {
  std::vector<PassbandCells> rows;
  const int count = std::min<int>(record.nFreqPoints, record.passband.RowsOf(1));
  for (int row = 1; row <= count; ++row) {
    PassbandCells cells;
    for (int column = 1; column <= PassbandLists::kColumns; ++column) {
      cells.at(static_cast<std::size_t>(column) - 1) = record.passband.At(row, column);
    }
    rows.push_back(std::move(cells));
  }
  return rows;
}

}  // namespace polefit

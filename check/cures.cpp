#include "check/cures.h"

#include <cmath>
#include <functional>
#include <vector>

#include "base/text_format.h"
#include "form/table_edits.h"
#include "record/question_catalogue.h"
#include "solver/problem/answers.h"

namespace polefit {

namespace {

using Change = std::function<void(std::string& cell)>;

/// Calls `change` with each cell of a column, or of all columns for 0.
void ForCells(FormCells& cells, const FindingPlace& place, int only, const Change& change) {
  const auto walk = [&](auto& points) {
    for (int column = 1; column <= points.kColumns; ++column) {
      if (only != 0 && column != only) continue;
      for (int row = 1; row < points.RowsOf(column); ++row) change(points.At(row, column));
    }
  };
  if (place.table == FindingTable::delay) {
    walk(cells.typed.delay);
  } else {
    walk(cells.typed.passband);
  }
}

Change Number(int digits, const std::function<double(double)>& map) {
  return [digits, map](std::string& cell) {
    const auto number = ParseNumber(cell);
    if (number) cell = Format("%.*g", digits, map(*number));
  };
}

Change Times(double factor) {
  constexpr int kFrequencyDigits = 12;
  return Number(kFrequencyDigits, [factor](double value) { return value * factor; });
}

double Ratio(double decibels) {
  return std::pow(10, decibels / 20);
}

/// The slot of the question that a finding is about, or 0.
int SlotOf(const FindingPlace& place) {
  for (const Question& question : kQuestions) {
    if (question.number == place.question) return question.slot;
  }
  return 0;
}

void PutPoints(std::string& text) {
  if (const auto meant = WithDecimalPoint(text)) text = *meant;
}

void PutPointsInto(FormCells& cells, const FindingPlace& place) {
  if (place.table != FindingTable::none) return ForCells(cells, place, 0, PutPoints);
  const int slot = SlotOf(place);
  if (slot == 0) return;
  std::vector<std::string> words = Words(cells.typed.Slot(slot));
  for (std::string& word : words) PutPoints(word);
  cells.typed.Slot(slot) = Joined(words);
}

/// How many numbers a list must have; 0 when the counts are none.
int WantedCount(const ResponseRecord& typed, int slot) {
  switch (slot) {
    case slot::kSigmaPoles:
      return CountAt(typed, slot::kNPoles, 0);
    case slot::kPoleReal:
    case slot::kPoleImag:
      return CountAt(typed, slot::kNPoles, 1);
    case slot::kYzero:
      return CountAt(typed, slot::kZeroCounts, kOmegaAxisZeros);
    case slot::kZreal:
    case slot::kZimag:
      return CountAt(typed, slot::kZeroCounts, kZeroPairs) +
             CountAt(typed, slot::kZeroCounts, kZeroQuads);
    default:
      return 0;
  }
}

/// The number that goes on as the last two do, or the last one once more.
std::string Next(const std::vector<std::string>& words) {
  const std::size_t count = words.size();
  const double last = ParseNumber(words[count - 1]).value_or(0);
  const double former = count > 1 ? ParseNumber(words[count - 2]).value_or(last) : last;
  const double next = last + (last - former);
  const bool isOnSameSide = next * last > 0;
  return isOnSameSide && next != last ? Format("%.6g", next) : words.back();
}

void FitList(ResponseRecord& typed, int slot) {
  const auto wanted = static_cast<std::size_t>(WantedCount(typed, slot));
  if (wanted == 0) return;
  std::vector<std::string> words = Words(typed.Slot(slot));
  if (words.empty()) return;
  if (words.size() > wanted) words.resize(wanted);
  while (words.size() < wanted) words.push_back(Next(words));
  typed.Slot(slot) = Joined(words);
}

}  // namespace

std::string CureName(Cure cure) {
  switch (cure) {
    case Cure::none:
      return {};
    case Cure::commasToPoints:
      return "Commas to Points";
    case Cure::hertzToMegahertz:
      return "Hz to MHz";
    case Cure::kilohertzToMegahertz:
      return "kHz to MHz";
    case Cure::gigahertzToMegahertz:
      return "GHz to MHz";
    case Cure::decibelsToRatios:
      return "dB to Ratios";
    case Cure::sortRows:
      return "Sort by Frequency";
    case Cure::dropRepeatedRows:
      return "Drop Repeated Rows";
    case Cure::weightOne:
      return "Weight 1 Where Empty";
    case Cure::keepTypedRows:
      return "Keep Typed Rows";
    case Cure::fitList:
      return "Fit List to Count";
  }
  return {};
}

void ApplyCure(FormCells& cells, const Finding& finding) {
  constexpr int kRatioDigits = 9;
  const FindingPlace& place = finding.place;
  const Table table = place.table == FindingTable::delay ? Table::delay : Table::passband;
  switch (finding.cure) {
    case Cure::none:
      return;
    case Cure::commasToPoints:
      return PutPointsInto(cells, place);
    case Cure::hertzToMegahertz:
      return ForCells(cells, place, 1, Times(1e-6));
    case Cure::kilohertzToMegahertz:
      return ForCells(cells, place, 1, Times(1e-3));
    case Cure::gigahertzToMegahertz:
      return ForCells(cells, place, 1, Times(1e3));
    case Cure::decibelsToRatios:
      return ForCells(cells, place, place.column, Number(kRatioDigits, Ratio));
    case Cure::sortRows:
      return SortByFrequency(cells, table);
    case Cure::dropRepeatedRows:
      return DropRepeatedRows(cells, table);
    case Cure::weightOne:
      return GiveWeights(cells);
    case Cure::keepTypedRows:
      return KeepTypedRows(cells, table);
    case Cure::fitList:
      return FitList(cells.typed, SlotOf(place));
  }
}

}  // namespace polefit

#include "exchange/import/other_values.h"

#include "exchange/fill_column.h"
#include "exchange/import/guess.h"
#include "exchange/import/merging.h"
#include "exchange/import/new_problem.h"
#include "exchange/read/number_text.h"

namespace polefit {

namespace {

Amount AmountOf(const std::string& cell) {
  return {CellNumber(cell, '.'), cell};
}

}  // namespace

void FillYout(const std::string& formula, const std::string& freqNorm, Points& points) {
  if (points.passband.empty()) return;
  ResponseRecord record;
  PutRows(CellsOfPoints(points.passband), record);
  record.Slot(slot::kFreqNorm) = freqNorm;
  const FilledColumn filled = CalculateFill(record, {FillColumn::yout, formula, {}});
  points.fault = filled.fault.empty() ? "" : "Yout: " + filled.fault;
  for (std::size_t i = 0; points.fault.empty() && i < points.passband.size(); ++i) {
    points.passband[i].yout = {filled.values[i]};
  }
}

void TakeYout(const SourceFile& file, Points& points) {
  const Guess guess = GuessChoices(file.table, Role::want);
  Points others = MakePoints(file.table, guess.choices);
  if (others.fault.empty() && guess.isKindUnsure) others.fault = "nothing says what the values are";
  if (!others.fault.empty()) {
    points.fault = file.name + ": " + others.fault;
    return;
  }
  const TakenColumns allButYout = {true, false, true};
  const MergedTable merged =
      Merge(CellsOfPoints(others.passband), points.passband, allButYout, Frequencies::file);
  points.passband.clear();
  for (const PassbandCells& row : merged.rows) {
    points.passband.push_back(
        {AmountOf(row[0]), AmountOf(row[1]), AmountOf(row[2]), AmountOf(row[3])});
  }
  if (merged.droppedPoints > 0) {
    points.notes.push_back(std::to_string(merged.droppedPoints) +
                           " points lie beyond the ends of " + file.name + " and are left out");
  }
  if (points.passband.size() < 2) points.fault = "fewer than 2 rows are within " + file.name;
}

}  // namespace polefit

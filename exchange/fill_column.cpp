#include "exchange/fill_column.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "base/expression.h"
#include "base/text.h"
#include "base/text_format.h"
#include "solver/problem/answers.h"

namespace polefit {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

constexpr std::array<std::pair<std::string_view, FillColumn>, 6> kColumnNames = {
    {{"frequency", FillColumn::frequency},
     {"yin", FillColumn::yin},
     {"yout", FillColumn::yout},
     {"weight", FillColumn::weight},
     {"delayfrequency", FillColumn::delayFrequency},
     {"delay", FillColumn::delay}}};

constexpr std::array<std::string_view, 7> kVariables = {"f", "x", "yin", "yout", "w", "tx", "row"};
enum Variable : std::size_t { kF, kX, kYin, kYout, kW, kTx, kRow };

/// The column of its table, from 1.
int ColumnIndex(FillColumn column) {
  switch (column) {
    case FillColumn::frequency:
    case FillColumn::delayFrequency:
      return kFrequencyColumn;
    case FillColumn::yin:
      return kYinColumn;
    case FillColumn::delay:
      return kTxColumn;
    case FillColumn::yout:
      return kYoutColumn;
    case FillColumn::weight:
      break;
  }
  return kWeightColumn;
}

template <std::size_t Columns>
std::string CellAt(const PointLists<Columns>& points, int row, int column) {
  return row <= points.RowsOf(column) ? points.At(row, column) : "";
}

template <std::size_t Columns>
bool HasText(const PointLists<Columns>& points, int row) {
  for (int column = 1; column <= points.kColumns; ++column) {
    if (!CellAt(points, row, column).empty()) return true;
  }
  return false;
}

template <std::size_t Columns>
int LastTypedRowOf(const PointLists<Columns>& points) {
  int row = 0;
  for (int column = 1; column <= points.kColumns; ++column) {
    row = std::max(row, points.RowsOf(column));
  }
  while (row > 0 && !HasText(points, row)) --row;
  return row;
}

/// How many rows from the top have no empty cell.
template <std::size_t Columns>
int FullRowsOf(const PointLists<Columns>& points) {
  for (int row = 1;; ++row) {
    for (int column = 1; column <= points.kColumns; ++column) {
      if (CellAt(points, row, column).empty()) return row - 1;
    }
  }
}

double NumberOr(const std::string& text, double other) {
  return ParseNumber(text).value_or(other);
}

/// A column of the other table over its frequencies.
class OtherColumn {
 public:
  template <std::size_t Columns>
  OtherColumn(const PointLists<Columns>& points, int column) {
    for (int row = 1; row <= LastTypedRowOf(points); ++row) {
      const double frequency = NumberOr(CellAt(points, row, 1), kNone);
      const double value = NumberOr(CellAt(points, row, column), kNone);
      if (std::isfinite(frequency) && std::isfinite(value)) points_.push_back({frequency, value});
    }
    std::stable_sort(points_.begin(), points_.end(),
                     [](const auto& one, const auto& other) { return one.first < other.first; });
  }

  double At(double frequency) const {
    if (points_.empty() || !std::isfinite(frequency)) return kNone;
    const auto after =
        std::upper_bound(points_.begin(), points_.end(), frequency,
                         [](double value, const auto& point) { return value < point.first; });
    if (after == points_.begin()) return after->second;
    const auto before = std::prev(after);
    if (after == points_.end()) return before->second;
    const double share = (frequency - before->first) / (after->first - before->first);
    return before->second + share * (after->second - before->second);
  }

 private:
  std::vector<std::pair<double, double>> points_;
};

/// The variables of a row in the table that is filled.
class RowReader {
 public:
  RowReader(const ResponseRecord& record, const Fill& fill)
      : record_(record),
        fill_(fill),
        isDelay_(IsOfDelayTable(fill.column)),
        freqNorm_(NumberOr(record.Slot(slot::kFreqNorm), kNone)),
        others_{OtherColumn(record.passband, kYinColumn), OtherColumn(record.passband, kYoutColumn),
                OtherColumn(record.passband, kWeightColumn), OtherColumn(record.delay, kTxColumn)} {
  }

  int RowCount() const {
    return fill_.grid ? fill_.grid->steps + 1 : LastTypedRow(record_, isDelay_);
  }

  /// kNone where a variable has no value.
  std::array<double, kVariables.size()> ValuesOf(int row) const {
    const double f = fill_.grid ? fill_.grid->At(row) : Cell(row, 1);
    std::array<double, kVariables.size()> values{};
    values[kF] = f;
    values[kX] = freqNorm_ > 0 ? f / freqNorm_ : kNone;
    for (const std::size_t variable : {kYin, kYout, kW}) {
      values[variable] =
          isDelay_ ? others_[variable - kYin].At(f) : Cell(row, static_cast<int>(variable));
    }
    values[kTx] = isDelay_ ? Cell(row, 2) : others_[3].At(f);
    values[kRow] = row;
    return values;
  }

  std::string WhyNone(std::size_t variable) const {
    if (variable == kX && !(freqNorm_ > 0)) return "x needs Freq Norm (question 5)";
    const bool isOther = isDelay_ ? variable >= kYin && variable <= kW : variable == kTx;
    const std::string name(kVariables[variable]);
    if (!isOther) return name + " is not a number there";
    return name + " is taken from the other table, which has no such points";
  }

 private:
  double Cell(int row, int column) const {
    return NumberOr(
        isDelay_ ? CellAt(record_.delay, row, column) : CellAt(record_.passband, row, column),
        kNone);
  }

  const ResponseRecord& record_;
  const Fill& fill_;
  bool isDelay_;
  double freqNorm_;
  std::array<OtherColumn, 4> others_;  ///< yin, yout, w, tx
};

void CalculateRows(const Expression& expression, const RowReader& reader, FilledColumn& filled) {
  for (int row = 1; row <= reader.RowCount(); ++row) {
    const auto values = reader.ValuesOf(row);
    filled.frequencies.push_back(values[kF]);
    filled.values.push_back(expression.At(values));
    if (!filled.fault.empty()) continue;
    for (std::size_t variable = 0; variable < values.size(); ++variable) {
      if (!std::isnan(values[variable]) || !expression.Uses(variable)) continue;
      filled.fault = Format("Row %d: ", row) + reader.WhyNone(variable) + ".";
      break;
    }
    if (filled.fault.empty() && !std::isfinite(filled.values.back())) {
      filled.fault = Format("Row %d: the formula has no finite value there.", row);
    }
    if (!filled.fault.empty()) filled.row = row;
  }
}

/// Enough digits that a typed frequency or a solver's answer survives, few enough to be read.
std::string CellText(double value, int digits) {
  return Format("%.*g", digits, value == 0 ? 0.0 : value);
}

template <std::size_t Columns>
void PutRows(const Fill& fill, const FilledColumn& filled, PointLists<Columns>& points) {
  const int rows = static_cast<int>(filled.values.size());
  points.KeepRows(rows);
  points.KeepRows(rows + 1);  // the spare row is empty
  for (int row = 1; row <= rows; ++row) {
    const auto i = static_cast<std::size_t>(row) - 1;
    if (fill.grid) points.At(row, kFrequencyColumn) = CellText(filled.frequencies[i], 12);
    points.At(row, ColumnIndex(fill.column)) = CellText(filled.values[i], 9);
  }
}

}  // namespace

std::optional<FillColumn> FillColumnOf(std::string_view name) {
  for (const auto& [known, column] : kColumnNames) {
    if (known == LowerCase(name)) return column;
  }
  return std::nullopt;
}

std::string FrequencyGrid::Fault() const {
  if (!std::isfinite(from) || !std::isfinite(to) || from < 0 || to <= from) {
    return "The frequencies must rise from 0 or above.";
  }
  if (isLogarithmic && from == 0) return "Logarithmic steps cannot begin at 0.";
  if (steps < 1 || steps >= kMostPoints) return "The number of steps goes from 1 to 32765.";
  return "";
}

double FrequencyGrid::At(int row) const {
  const double share = static_cast<double>(row - 1) / steps;
  if (row == steps + 1) return to;
  return isLogarithmic ? from * std::pow(to / from, share) : from + (to - from) * share;
}

FilledColumn CalculateFill(const ResponseRecord& record, const Fill& fill) {
  FilledColumn filled;
  if (fill.grid) filled.fault = fill.grid->Fault();
  if (!filled.fault.empty()) return filled;
  try {
    const Expression expression(fill.expression, kVariables);
    const RowReader reader(record, fill);
    if (reader.RowCount() == 0) {
      filled.fault = "The table has no rows yet; give it frequencies.";
      return filled;
    }
    CalculateRows(expression, reader, filled);
  } catch (const ExpressionError& error) {
    filled.fault = Format("Character %zu: ", error.place) + error.what() + ".";
    filled.place = error.place;
  }
  return filled;
}

void PutFill(ResponseRecord& record, const Fill& fill, const FilledColumn& filled) {
  if (IsOfDelayTable(fill.column)) {
    PutRows(fill, filled, record.delay);
    const int rows = record.delay.RowsOf(1) - 1;
    const int full = FullRowsOf(record.delay);
    record.nDelayPoints =
        static_cast<std::int16_t>(std::clamp<int>(record.nDelayPoints, full, rows));
    return;
  }
  const int former = LastTypedRow(record, false);
  PutRows(fill, filled, record.passband);
  const int rows = record.passband.RowsOf(1) - 1;
  for (int row = 1; row <= rows; ++row) {
    std::string& weight = record.passband.At(row, kWeightColumn);
    const bool isDue = row > former || !IsYes(record.Slot(slot::kUseWeights));
    if (weight.empty() && isDue) weight = "1";
  }
  const int full = FullRowsOf(record.passband);
  record.nFreqPoints = static_cast<std::int16_t>(std::clamp<int>(record.nFreqPoints, full, rows));
}

int LastTypedRow(const ResponseRecord& record, bool isDelayTable) {
  return isDelayTable ? LastTypedRowOf(record.delay) : LastTypedRowOf(record.passband);
}

}  // namespace polefit

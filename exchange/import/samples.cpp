#include "exchange/import/samples.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/text_format.h"
#include "exchange/import/phase_delay.h"
#include "exchange/read/number_text.h"

namespace polefit {

namespace {

/// The cell as a number `places` powers of ten larger, its digits as they were.
Amount Moved(const SourceTable& table, int row, int column, int places) {
  const double number = table.Number(row, column);
  if (std::isnan(number)) return {number};
  const std::string text =
      MovePoint(NumberText(table.Text(row, column), table.decimalMark), places);
  return {places == 0 ? number : CellNumber(text, '.'), text};
}

bool IsTaken(const ValueColumn& value) {
  return value.column != kNoColumn;
}

double PhaseInDegrees(const SourceTable& table, int row, const ImportChoices& choices) {
  constexpr double degrees = 180 / std::numbers::pi;
  const double number = table.Number(row, choices.delay);
  if (choices.delaySecond != kNoColumn) {
    return std::atan2(table.Number(row, choices.delaySecond), number) * degrees;
  }
  return choices.angleUnit == AngleUnit::degrees ? number : number * degrees;
}

Sample TakeSample(const SourceTable& table, int row, const ImportChoices& choices) {
  Sample sample;
  sample.line = table.LineOf(row);
  sample.frequency = Moved(table, row, choices.frequency, PlacesToMegahertz(choices.unit));
  if (IsTaken(choices.value)) sample.value = Magnitude(table, row, choices.value);
  if (IsTaken(choices.other)) sample.other = Magnitude(table, row, choices.other);
  if (choices.weight != kNoColumn) sample.weight = Moved(table, row, choices.weight, 0);
  if (choices.delaySource == DelaySource::column) {
    sample.delay = Moved(table, row, choices.delay, PlacesToNanoseconds(choices.delayUnit));
  }
  if (choices.delaySource == DelaySource::phase) {
    sample.delay = {PhaseInDegrees(table, row, choices)};
  }
  return sample;
}

bool IsWhole(const Sample& sample) {
  return std::isfinite(sample.frequency.value) && sample.frequency.value >= 0 &&
         std::isfinite(sample.value.value) && std::isfinite(sample.other.value) &&
         std::isfinite(sample.weight.value) && std::isfinite(sample.delay.value);
}

/// Rows in rising order; of rows at one frequency the first in the file stays.
void Sort(Samples& samples) {
  std::vector<Sample>& rows = samples.rows;
  const auto isBelow = [](const Sample& a, const Sample& b) {
    return a.frequency.value < b.frequency.value;
  };
  if (!std::is_sorted(rows.begin(), rows.end(), isBelow)) {
    std::stable_sort(rows.begin(), rows.end(), isBelow);
    samples.notes.emplace_back("rows sorted by frequency");
  }
  const auto end = std::unique(rows.begin(), rows.end(), [](const Sample& a, const Sample& b) {
    return a.frequency.value == b.frequency.value;
  });
  const auto repeated = rows.end() - end;
  rows.erase(end, rows.end());
  if (repeated > 0) {
    samples.notes.push_back(std::to_string(repeated) +
                            " rows repeat a frequency: the first of each is kept");
  }
}

}  // namespace

std::string TextOf(const Amount& amount) {
  return amount.text.empty() ? PlainNumber(amount.value) : amount.text;
}

Amount Magnitude(const SourceTable& table, int row, const ValueColumn& value) {
  const double number = table.Number(row, value.column);
  constexpr double kAmplitude = 20;
  constexpr double kPower = 10;
  switch (value.kind) {
    case ValueKind::decibel:
      return {std::pow(10, number / kAmplitude)};
    case ValueKind::powerDecibel:
      return {std::pow(10, number / kPower)};
    case ValueKind::realImaginary:
      return {value.second == kNoColumn ? std::abs(number)
                                        : std::hypot(number, table.Number(row, value.second))};
    default:
      return Moved(table, row, value.column, 0);
  }
}

double Decibel(double magnitude) {
  return 20 * std::log10(magnitude);
}

Samples TakeSamples(const SourceTable& table, const ImportChoices& choices) {
  Samples samples;
  samples.skippedLines = table.skippedLines;
  samples.rows.reserve(static_cast<std::size_t>(table.Rows()));
  for (int row = 0; row < table.Rows(); ++row) {
    Sample sample = TakeSample(table, row, choices);
    if (IsWhole(sample)) {
      samples.rows.push_back(std::move(sample));
    } else {
      samples.skippedLines.push_back(table.LineOf(row));
    }
  }
  std::sort(samples.skippedLines.begin(), samples.skippedLines.end());
  std::erase_if(samples.rows, [&](const Sample& row) {
    return row.frequency.value < choices.rows.from || row.frequency.value > choices.rows.to;
  });
  Sort(samples);
  if (choices.delaySource == DelaySource::phase) PhaseToDelay(samples, choices.rows.smooth);
  return samples;
}

}  // namespace polefit

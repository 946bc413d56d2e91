#include "exchange/import/points.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/text_format.h"
#include "exchange/import/thinning.h"
#include "record/response_record.h"

namespace polefit {

namespace {

const Amount kOne = {1, "1"};

/// The samples after everything that is chosen of the rows.
Samples ChosenSamples(const SourceTable& table, const ImportChoices& choices) {
  Samples samples = TakeSamples(table, choices);
  const RowChoices& rows = choices.rows;
  Smooth(samples.rows, rows.smooth, choices);
  KeepEvery(samples.rows, rows.every);
  ThinToPoints(samples.rows, rows.points, rows.logarithmic);
  return samples;
}

PassbandRow RowOf(const Sample& sample, const ImportChoices& choices) {
  const Amount& other = choices.other.column == kNoColumn ? kOne : sample.other;
  const Amount& weight = choices.weight == kNoColumn ? kOne : sample.weight;
  if (choices.role == Role::equalise) {
    return {sample.frequency, sample.value, other, weight, sample.line};
  }
  return {sample.frequency, other, sample.value, weight, sample.line};
}

void Normalise(std::vector<PassbandRow>& rows) {
  double largest = 0;
  for (const PassbandRow& row : rows) largest = std::max(largest, row.yout.value);
  if (largest <= 0 || largest == 1) return;
  for (PassbandRow& row : rows) row.yout = {row.yout.value / largest};
}

std::vector<DelayRow> DelayRows(const std::vector<Sample>& samples, Role role) {
  double largest = -HUGE_VAL;
  for (const Sample& sample : samples) largest = std::max(largest, sample.delay.value);
  std::vector<DelayRow> rows;
  rows.reserve(samples.size());
  for (const Sample& sample : samples) {
    rows.push_back({sample.frequency,
                    role == Role::equalise ? sample.delay : Amount{largest - sample.delay.value},
                    sample.line});
  }
  return rows;
}

/// Why so many rows cannot be taken; "" when they can.
std::string CountFault(std::size_t rows, const Samples& samples) {
  if (!samples.fault.empty()) return samples.fault;
  if (rows < 2) {
    return rows == 0 ? "no row is left: at least 2 are needed"
                     : "only 1 row is left: at least 2 are needed";
  }
  if (rows <= static_cast<std::size_t>(kMostPoints)) return {};
  return std::to_string(rows) +
         " rows are more than the 32766 that a table holds: take fewer (--points N, --every N)";
}

void Append(std::vector<std::string>& notes, const std::vector<std::string>& more) {
  notes.insert(notes.end(), more.begin(), more.end());
}

/// The lowest and the highest of what `value` says of the rows.
template <typename Rows, typename Value>
std::pair<double, double> RangeOf(const Rows& rows, Value value) {
  std::pair<double, double> range(HUGE_VAL, -HUGE_VAL);
  for (const auto& row : rows) {
    range.first = std::min(range.first, value(row));
    range.second = std::max(range.second, value(row));
  }
  return range;
}

template <typename Rows>
std::string FrequencyRange(const Rows& rows) {
  return Fitted(rows.front().frequency.value, 6, 12) + " to " +
         Fitted(rows.back().frequency.value, 6, 12) + " MHz";
}

std::string DecibelRange(double lowest, double highest) {
  // Ratios below are no measurement any more.
  constexpr double kLeast = 1e-15;
  return Format("%.3g to %.3g dB", Decibel(std::max(highest, kLeast)),
                Decibel(std::max(lowest, kLeast)));
}

}  // namespace

Points MakePoints(const SourceTable& table, const ImportChoices& choices) {
  Points points;
  points.notes = table.notes;
  points.fault = table.fault;
  if (!points.fault.empty()) return points;
  const Samples samples = ChosenSamples(table, choices);
  points.skippedLines = samples.skippedLines;
  Append(points.notes, samples.notes);
  points.fault = CountFault(samples.rows.size(), samples);
  if (!points.fault.empty()) return points;
  for (const Sample& sample : samples.rows) points.passband.push_back(RowOf(sample, choices));
  if (choices.rows.normalise) Normalise(points.passband);
  if (choices.delaySource != DelaySource::none) {
    points.delays = DelayRows(samples.rows, choices.role);
  }
  return points;
}

void TakeDelays(const SourceTable& table, ImportChoices choices, Points& points) {
  if (!points.fault.empty()) return;
  choices.other = {};
  choices.weight = kNoColumn;
  const Samples samples =
      table.fault.empty() ? ChosenSamples(table, choices) : Samples{{}, {}, {}, table.fault};
  if (points.passband.empty()) {
    points.skippedLines = samples.skippedLines;
  } else if (samples.skippedLines != points.skippedLines && !samples.skippedLines.empty()) {
    points.notes.push_back("delay: " + SkippedText(samples.skippedLines));
  }
  for (const std::string& note : samples.notes) {
    const bool isSaid = std::count(points.notes.begin(), points.notes.end(), note) > 0;
    if (!isSaid) points.notes.push_back(note);
  }
  points.fault = CountFault(samples.rows.size(), samples);
  if (!points.fault.empty()) points.fault = "delay: " + points.fault;
  if (points.fault.empty()) points.delays = DelayRows(samples.rows, choices.role);
}

std::string SkippedText(const std::vector<int>& lines) {
  constexpr std::size_t kMostNamed = 20;
  if (lines.empty()) return {};
  std::string text =
      std::to_string(lines.size()) + (lines.size() == 1 ? " line" : " lines") + " skipped: ";
  for (std::size_t i = 0; i < std::min(lines.size(), kMostNamed); ++i) {
    text += (i == 0 ? "" : ", ") + std::to_string(lines[i]);
  }
  return lines.size() > kMostNamed ? text + " ..." : text;
}

std::string SummaryOf(const Points& points, Role role) {
  const std::vector<PassbandRow>& rows = points.passband;
  if (rows.empty()) return {};
  const auto [lowest, highest] = RangeOf(rows, [&](const PassbandRow& row) {
    return role == Role::equalise ? row.yin.value : row.yout.value;
  });
  return std::to_string(rows.size()) + " rows, " + FrequencyRange(rows) + ", " +
         DecibelRange(lowest, highest);
}

std::string DelaySummaryOf(const Points& points) {
  const std::vector<DelayRow>& rows = points.delays;
  if (rows.empty()) return {};
  const auto [lowest, highest] = RangeOf(rows, [](const DelayRow& row) { return row.tx.value; });
  return std::to_string(rows.size()) + " delay rows, " + FrequencyRange(rows) +
         Format(", TX %.4g to %.4g ns", lowest, highest);
}

}  // namespace polefit

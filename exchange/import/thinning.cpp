#include "exchange/import/thinning.h"

#include <algorithm>
#include <cmath>

#include "exchange/import/local_quadratic.h"

namespace polefit {

namespace {

/// The interval, from 0, of `count` that a frequency falls into.
int IntervalOf(double frequency, double first, double last, int count, bool logarithmic) {
  const double part = logarithmic ? std::log(frequency / first) / std::log(last / first)
                                  : (frequency - first) / (last - first);
  return std::clamp(static_cast<int>(part * count), 0, count - 1);
}

using SampleRows = std::vector<Sample>;
using Iterator = SampleRows::const_iterator;

Amount MeanOf(Iterator begin, Iterator end, Amount Sample::*member) {
  double sum = 0;
  for (Iterator at = begin; at != end; ++at) sum += ((*at).*member).value;
  return {sum / static_cast<double>(end - begin)};
}

/// One row is itself; of several each number is the mean.
Sample Mean(Iterator begin, Iterator end) {
  Sample mean = *begin;
  if (end - begin == 1) return mean;
  for (Amount Sample::*const member :
       {&Sample::frequency, &Sample::value, &Sample::other, &Sample::weight, &Sample::delay}) {
    mean.*member = MeanOf(begin, end, member);
  }
  return mean;
}

/// The rows of one interval and their mean.
struct Interval {
  Iterator begin;
  Iterator end;
  Sample mean;
};

std::vector<Interval> IntervalsOf(const SampleRows& rows, int count, bool logarithmic) {
  // A logarithm needs a first frequency above 0: a row at 0 then is an interval of its own.
  const auto firstAbove =
      logarithmic ? std::find_if(rows.begin(), rows.end(),
                                 [](const Sample& row) { return row.frequency.value > 0; })
                  : rows.begin();
  const int apart = firstAbove == rows.begin() ? 0 : 1;
  const double first = firstAbove->frequency.value;
  const double last = rows.back().frequency.value;
  const auto intervalOf = [&](const Sample& row) {
    if (apart == 1 && row.frequency.value <= 0) return -1;
    return IntervalOf(row.frequency.value, first, last, std::max(1, count - apart), logarithmic);
  };
  std::vector<Interval> intervals;
  for (Iterator begin = rows.begin(); begin != rows.end();) {
    const int number = intervalOf(*begin);
    const Iterator end = std::find_if(begin, rows.end(),
                                      [&](const Sample& row) { return intervalOf(row) != number; });
    intervals.push_back({begin, end, Mean(begin, end)});
    begin = end;
  }
  return intervals;
}

/// Whether the row is lower than the rows beside it.
bool IsMinimum(const SampleRows& rows, Iterator row) {
  if (row == rows.begin() || row + 1 == rows.end()) return false;
  return row->value.value < (row - 1)->value.value && row->value.value < (row + 1)->value.value;
}

/// A magnitude of 0 has no decibels: it stays, and the others are smoothed without it.
void SmoothColumn(SampleRows& rows, int points, Amount Sample::*member, bool inDecibels) {
  std::vector<std::size_t> chosen;
  std::vector<double> x;
  std::vector<double> y;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const double value = (rows[i].*member).value;
    if (inDecibels && value <= 0) continue;
    chosen.push_back(i);
    x.push_back(rows[i].frequency.value);
    y.push_back(inDecibels ? Decibel(value) : value);
  }
  if (x.size() < 3) return;
  y = Smoothed(x, y, points);
  for (std::size_t i = 0; i < chosen.size(); ++i) {
    rows[chosen[i]].*member = {inDecibels ? std::pow(10, y[i] / 20) : y[i]};
  }
}

}  // namespace

void KeepEvery(std::vector<Sample>& rows, int n) {
  if (n <= 1) return;
  std::vector<Sample> kept;
  for (std::size_t i = 0; i < rows.size(); i += static_cast<std::size_t>(n)) {
    kept.push_back(std::move(rows[i]));
  }
  rows = std::move(kept);
}

void ThinToPoints(std::vector<Sample>& rows, int points, bool logarithmic) {
  if (points <= 0 || rows.size() <= static_cast<std::size_t>(points)) return;
  const std::vector<Interval> intervals = IntervalsOf(rows, points, logarithmic);
  std::vector<Sample> thinned;
  for (std::size_t i = 0; i < intervals.size(); ++i) {
    const Interval& interval = intervals[i];
    const Iterator lowest = std::min_element(
        interval.begin, interval.end,
        [](const Sample& a, const Sample& b) { return a.value.value < b.value.value; });
    const bool hasNeighbours = i > 0 && i + 1 < intervals.size();
    const double limit = lowest->value.value * kThreeDecibels;
    const bool isNull = hasNeighbours && IsMinimum(rows, lowest) &&
                        limit < intervals[i - 1].mean.value.value &&
                        limit < intervals[i + 1].mean.value.value;
    thinned.push_back(isNull ? *lowest : interval.mean);
  }
  rows = std::move(thinned);
}

void Smooth(std::vector<Sample>& rows, int points, const ImportChoices& choices) {
  if (points < 3) return;
  SmoothColumn(rows, points, &Sample::value, true);
  if (choices.other.column != kNoColumn) SmoothColumn(rows, points, &Sample::other, true);
  if (choices.delaySource == DelaySource::column) {
    SmoothColumn(rows, points, &Sample::delay, false);
  }
}

}  // namespace polefit

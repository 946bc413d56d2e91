#pragma once

#include <string>
#include <vector>

#include "exchange/import/choices.h"
#include "exchange/import/samples.h"

namespace polefit {

/// A passband point: MHz and linear magnitudes.
struct PassbandRow {
  Amount frequency;
  Amount yin;
  Amount yout;
  Amount weight;
  /// The line of the file, or the first of several that the row is a mean of.
  int line = 0;
};

/// A delay point: MHz and ns.
struct DelayRow {
  Amount frequency;
  Amount tx;
  /// As of a passband point.
  int line = 0;
};

/// What a file gives, ready for the two tables.
struct Points {
  std::vector<PassbandRow> passband;
  std::vector<DelayRow> delays;
  /// Lines that were left out because they, or a chosen cell, cannot be read.
  std::vector<int> skippedLines;
  std::vector<std::string> notes;
  /// Why nothing can be taken, or empty.
  std::string fault;
};

/// The points of a table: its rows chosen, smoothed and thinned, in their role. A delay to be
/// modelled becomes TX := largest delay - delay, so that the delay of H(s) gets the measured
/// shape; one to be equalised is TX itself.
Points MakePoints(const SourceTable& table, const ImportChoices& choices);

/// Takes the delay points from a table, this one or another, by the frequency, the delay and, where
/// the values have a say in the thinning, the value columns of `choices`. Where there are no
/// passband points, the skipped lines are those of the delay.
void TakeDelays(const SourceTable& table, ImportChoices choices, Points& points);

/// "3 lines skipped: 1, 2, 44", or "".
std::string SkippedText(const std::vector<int>& lines);

/// "40 rows, 1.5 to 60 MHz, 0.85 to -83.4 dB": how many points there are, their frequencies, and
/// the highest and the lowest of what they tell in their role; "" without any.
std::string SummaryOf(const Points& points, Role role);
/// "40 delay rows, 1.5 to 60 MHz, TX 0 to 57.5 ns"; "" without any.
std::string DelaySummaryOf(const Points& points);

}  // namespace polefit

#pragma once

#include <functional>
#include <vector>

#include "bench/families/prototypes.h"
#include "record/response_record.h"

namespace polefit::families {

/// How many locations of each kind H(s) has.
struct Counts {
  int sigmaPoles = 0;
  int polePairs = 0;
  int omegaZeros = 0;
  int leftPairs = 0;
  int rightPairs = 0;
  int sigmaZeros = 0;
};
Counts CountsOf(const Filter& filter);

/// A passband row, its frequency normalised.
struct Sample {
  double frequency;
  double yin;
  double yout;
};

/// What the rows are written in.
struct Units {
  double freqNorm = 10;  ///< MHz
  double yout = 1;       ///< the factor of Yout
};

/// A record with crude starting values.
ResponseRecord MakeRecord(const Counts& counts, const std::vector<Sample>& samples,
                          const Units& units);

/// Puts the first omega-axis zero on Freq Norm, where it is held.
void HoldFirstNull(ResponseRecord& record);

/// Wants flat delay: `rows` rows up to `end` (normalised) with the TX that makes the total of a
/// filter of this delay (seconds, normalised) constant.
void AddDelayRows(ResponseRecord& record, const std::function<double(double)>& delay, double end,
                  int rows);

}  // namespace polefit::families

#pragma once

#include <optional>
#include <string>

#include "runs/machine_line.h"

namespace polefit {

/// How good a fit is, from the solver's figures.
struct FitQuality {
  /// From Ipower 1 on: an error above 3 dB in a row with weight. Below it: an error above 10 % of
  /// the largest Yout, or above 3 dB in a row with weight and a tenth of the largest Yout.
  bool isPoor = false;
  /// "rms 0.06 %, worst 0.028 dB at 60 MHz; nothing on a bound". Other rows above 3 dB are said.
  std::string text;
  /// "rms 0.06 %, worst 0.028 dB at 60 MHz", for little room.
  std::string brief;
};

/// Nothing when the solver has told no such figures.
std::optional<FitQuality> QualityOf(const MachineLine& figures);

/// A part as per cent with two significant digits: "0.15 %".
std::string PerCent(double part);

}  // namespace polefit

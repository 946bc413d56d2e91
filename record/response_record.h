#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "record/point_lists.h"

namespace polefit {

inline constexpr int kSlotCount = 24;
inline constexpr int kSolverValueCount = 9;
/// The rows that a table can hold: they are counted in 16 bits, with a spare one.
inline constexpr int kMostPoints = 32766;

/// Every answer of one fitting run, as UTF-8 text exactly as typed.
/// Frequencies are in MHz, delays in ns, pole and zero locations normalised.
struct ResponseRecord {
  /// The answer slots; `Slot(k)` counts them from 1 as the file does.
  std::array<std::string, kSlotCount> slots;
  std::string Note1;
  std::string Note2;
  /// The name of the Response Input File that the record belongs to.
  std::string LastFileName;
  /// Rows 1 to `nFreqPoints` are points; the reader leaves one spare row behind them.
  PassbandLists passband;
  DelayLists delay;
  std::int16_t nFreqPoints = 0;
  std::int16_t nDelayPoints = 0;
  /// Remax, Detail, Zero, StepsLim, StepOut, EvalMax, SetRho, Ratio, Accuracy.
  std::array<std::string, kSolverValueCount> solver;
  /// 9 when the file carries solver values, else 0.
  int solverCount = 0;

  std::string& Slot(int number) { return slots.at(static_cast<std::size_t>(number - 1)); }
  const std::string& Slot(int number) const {
    return slots.at(static_cast<std::size_t>(number - 1));
  }

  bool operator==(const ResponseRecord&) const = default;
};

/// Whether the answer of a flag ticks its box.
inline bool IsYes(std::string_view answer) {
  return answer == "Y" || answer == "y";
}

/// The answer slots by name. Their order is the order of the answers in the file.
namespace slot {
enum : int {
  kEqualDelay = 1,
  kTmin,
  kDelRipplePower,
  kIPower,
  kUseWeights,
  kMagnVSripple,
  kFreqNorm,
  kNPoles,
  kSigmaPoles,
  kPoleReal,
  kPoleImag,
  kSigmaZeroWanted,
  kSigmaZero,
  kDoublet,
  kLossless,
  kZeroCounts,
  kYzero,
  kZreal,
  kZimag,
  kGain,
  kLowestXY,
  kMaxXY,
  kFreqPointCount,
  kDelayPointCount
};
}  // namespace slot

}  // namespace polefit

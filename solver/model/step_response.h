#pragma once

#include <cstddef>
#include <vector>

#include "solver/model/transfer_function.h"

namespace polefit {

/// What H(s) makes of a unit step at t = 0.
struct StepResponse {
  std::vector<double> nanoseconds;  ///< even steps from 0 on
  std::vector<double> values;       ///< the first one is that right after t = 0
  /// The value right after t = 0: other than 0 when H(s) has as many zeros as poles.
  double jump = 0;
  double final = 0;  ///< H(0), the gain
};

/// The step response at `count` even steps of `stepNanoseconds`, the first at 0. H(s) is a cascade
/// of sections of first and second order, whose states are carried from step to step by the matrix
/// exponential: exact at every step, whatever its size, and for poles that coincide.
StepResponse StepResponseOf(const TransferFunction& h, double stepNanoseconds, std::size_t count);

/// The same over the time after which it stays within 1 % of the largest value around its end, and
/// a quarter more, so that the rise can be seen.
StepResponse SettledStepResponse(const TransferFunction& h, std::size_t count);

}  // namespace polefit

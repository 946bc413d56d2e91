#pragma once

#include "exchange/import/samples.h"

namespace polefit {

/// Turns the phase of each row (degrees, in `delay`) into its delay in ns: unwrapped, then minus
/// the slope of a local quadratic over `points` rows (5 where it is less). Steps above 150 degrees
/// cannot be unwrapped for certain and are a fault.
void PhaseToDelay(Samples& samples, int points);

}  // namespace polefit

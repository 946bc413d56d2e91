#pragma once

#include <vector>

#include "solver/search/search.h"

namespace polefit {

/// Whether two F are one optimum: within 0.1 %, or both below the noise floor.
bool IsSameCost(double one, double other, double negligible);

/// Fills in what the starts tell: the optima, the witnesses and how many of them agree with the
/// answer `best`, and the share of starts that may end elsewhere.
void CountOptima(Summary& summary);

/// Whether the starts so far are enough.
bool HasSeenEnough(const Summary& summary);

}  // namespace polefit

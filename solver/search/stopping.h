#pragma once

#include <vector>

#include "solver/search/search.h"

namespace polefit {

/// Fills in what the starts tell: the optima, the witnesses and how many of them agree with the
/// answer `best`, and the share of starts that may end elsewhere.
void CountOptima(Summary& summary);

/// Whether the starts so far are enough.
bool HasSeenEnough(const Summary& summary);

}  // namespace polefit

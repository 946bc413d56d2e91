#pragma once

#include <vector>

#include "plots/fit_curves.h"

namespace polefit {

/// How far the typed locations of a problem can be trusted when they are the answer of a fit, an
/// entry a factor; as the report tells it.
std::vector<Deviation> DeviationsOf(const Problem& problem);

}  // namespace polefit

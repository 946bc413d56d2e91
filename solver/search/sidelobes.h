#pragma once

#include <vector>

#include "solver/search/wren.h"

namespace polefit {

struct Problem;

/// The sidelobe peak above each omega-axis zero, the zeros in ascending order; behind the last one
/// up to the largest location or ten times the zero. Where two zeros coincide the level is minus
/// infinity. `parameters` are locations in the order of the problem's.
std::vector<Peak> FindSidelobes(const Problem& problem, const std::vector<double>& parameters);

}  // namespace polefit

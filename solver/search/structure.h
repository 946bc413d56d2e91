#pragma once

#include <cstddef>
#include <vector>

#include "solver/problem/problem.h"
#include "solver/search/evaluator.h"

namespace polefit {

/// A factor to be put into a constellation, with its location.
struct NewFactor {
  FactorKind kind;
  double location;
  double imaginary = 0;  ///< of a pair
};

/// The same points for another constellation: that of the point without the factors `removed` and
/// with ORCA's new ones. It starts where the point is.
Problem Restructured(const Problem& problem, const Iterate& iterate,
                     const std::vector<std::size_t>& removed, const std::vector<NewFactor>& added);

}  // namespace polefit

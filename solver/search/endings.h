#pragma once

#include <cstddef>
#include <vector>

#include "solver/problem/problem.h"
#include "solver/search/evaluator.h"
#include "solver/search/listener.h"

namespace polefit {

/// F of an exact fit whose Yout, Yin and TX are rounded to the units they are typed in: of each
/// unit 1/12 of its square, the variance of an even spread.
double RoundingCost(const Problem& problem, const Iterate& iterate);

/// The words for an answer whose start STEPSLIM or EVALMAX has ended: they say converged where no
/// further step could tell more than the points do.
EndReason JudgedEnding(EndReason ending, const Problem& problem, const Iterate& answer,
                       double roundingCost);

/// Whether the last equalised zero stands at question 14, so that no sidelobe is left behind it.
bool IsLastZeroAtBound(const Problem& problem, const Iterate& iterate);

/// Free omega-axis zeros that have met, not at question 14: groups of two or more factors. They are
/// an edge and no optimum in the numerator's coefficients: F rises with the square of their
/// distance, so that no local step parts them.
std::vector<std::vector<std::size_t>> MetZeros(const Problem& problem, const Iterate& iterate);

/// Pole pairs with imaginary part 0, factors: two equal real poles, which cannot part by
/// themselves, since the square of the imaginary part would have to become negative.
std::vector<std::size_t> PairsOnSigmaAxis(const Problem& problem, const Iterate& iterate);

}  // namespace polefit

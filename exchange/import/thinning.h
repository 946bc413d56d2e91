#pragma once

#include "exchange/import/samples.h"

namespace polefit {

/// Keeps the first row and every n-th after it.
void KeepEvery(std::vector<Sample>& rows, int n);

/// At most `points` rows: the mean of the rows in each of so many intervals, equal in frequency or
/// in its logarithm. A minimum of the value more than 3 dB under the rows on both sides is kept as
/// it is, so that no null is averaged away.
void ThinToPoints(std::vector<Sample>& rows, int points, bool logarithmic);

/// A local quadratic over `points` rows on the magnitudes in dB (those of 0 stay) and the delay.
void Smooth(std::vector<Sample>& rows, int points, const ImportChoices& choices);

}  // namespace polefit

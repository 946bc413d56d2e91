#pragma once

#include <optional>
#include <vector>

#include "plots/move_location.h"

namespace polefit {

/// The answers that give H(s) one location more, near (`real`, `imaginary`), normalised and inside
/// the bounds: the count of question 6 or 11 and the lists, or question 10. Nothing where H(s)
/// could not be so, as with more zeros than poles.
std::optional<std::vector<ChangedAnswer>> AddLocation(const ResponseRecord& record, FactorKind kind,
                                                      double real, double imaginary);

/// The answers that take a typed location away; nothing where H(s) could not be without it.
std::optional<std::vector<ChangedAnswer>> RemoveLocation(const ResponseRecord& record,
                                                         const FitCurves& typed,
                                                         std::size_t location);

/// The record with these answers.
ResponseRecord WithAnswers(ResponseRecord record, const std::vector<ChangedAnswer>& answers);

}  // namespace polefit

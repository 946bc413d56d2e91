#pragma once

#include <string>
#include <vector>

#include "plots/fit_curves.h"
#include "record/response_record.h"

namespace polefit {

/// A new text for an answer.
struct ChangedAnswer {
  int slot = 0;
  std::string text;
};

/// The smallest omega-axis zero that a command gives: exactly 1 would hold it there.
inline constexpr double kLeastFreeZero = 1.001;

/// The answers that put a location of the typed curves near (`real`, `imaginary`), normalised.
/// Every kind stays on its axis and on its side, inside the bounds; a held zero stays where it is:
/// no answers.
std::vector<ChangedAnswer> MoveLocation(const ResponseRecord& record, const FitCurves& typed,
                                        std::size_t location, double real, double imaginary);

/// A number as it is typed into an answer: four significant digits.
std::string TypedNumber(double value);

}  // namespace polefit

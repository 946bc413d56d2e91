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

/// The record with numbers in the lists that are in use and empty: those that stand for them, as
/// they are drawn.
ResponseRecord WithDrawnLists(const ResponseRecord& record, const FitCurves& typed);

/// The answers that put a location of the typed curves near (`real`, `imaginary`), normalised.
/// Every kind stays on its axis and on its side, inside the bounds; a held zero stays where it is:
/// no answers. An empty list gets all its numbers.
std::vector<ChangedAnswer> MoveLocation(const ResponseRecord& typedRecord, const FitCurves& typed,
                                        std::size_t location, double real, double imaginary);

/// A number as it is typed into an answer: four significant digits.
std::string TypedNumber(double value);

}  // namespace polefit

#pragma once

#include <string>

#include "plots/diagram.h"

namespace polefit {

/// The curves as a table for other programs: a line of names, then a line a frequency. The first
/// columns are MHz and, for each set of curves, |H|, Yin |H|, group delay in ns and phase in
/// degrees; what is not drawn is an empty cell.
std::string CurvesAsCsv(const ShownCurves& shown);

}  // namespace polefit

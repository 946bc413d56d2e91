#pragma once

#include <string>
#include <string_view>

namespace polefit {

/// The number that a whole cell is, NaN when it is none. Taken are signs (the typographic minus
/// too), a decimal mark and an exponent behind e, E, d or D; refused are marks between thousands,
/// NaN, infinity and what no double holds.
double CellNumber(std::string_view cell, char decimalMark);

/// The same number as every reader of ours takes it: with a decimal point and an E, else
/// character by character as it was.
std::string NumberText(std::string_view cell, char decimalMark);

/// `number`, a text from NumberText, times ten to the power of `places`, without arithmetic: the
/// decimal point moves, so that no digit changes ("1500000" by -6 is "1.5"). Unmoved it stays as
/// it is; moved it has no exponent and no zeros that say nothing.
std::string MovePoint(std::string_view number, int places);

}  // namespace polefit

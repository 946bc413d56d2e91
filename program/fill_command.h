#pragma once

#include <span>
#include <string>

#include "platform/host.h"

namespace polefit {

/// `polefit --fill COLUMN=EXPRESSION [--grid A:B:N] FILE OUT`, --fill as often as wanted: fills
/// columns of the points of a Response Input File by formulas, one after the other, and writes it
/// as OUT. `words` are those behind the first "--fill". The exit code is 0; 1 when a formula has no
/// value in a row or a row stays without a cell; 2 when FILE could not be read to its end; 3 when
/// there is none; 4 when OUT cannot be written; 64 for a wrong command line or formula.
int FillCommand(Host& host, std::span<const std::string> words);

}  // namespace polefit

#pragma once

#include <string>

#include "form/cells.h"
#include "record/finding.h"

namespace polefit {

/// What a cure's button says, as the name of a step: "Commas to Points"; "" for none.
std::string CureName(Cure cure);

/// Does what the finding's cure says to what is typed. What it does not fit stays as it is.
void ApplyCure(FormCells& cells, const Finding& finding);

}  // namespace polefit

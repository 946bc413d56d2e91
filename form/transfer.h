#pragma once

#include "form/state.h"

namespace polefit {

/// Takes the controls into the record. The count answers get the point counts from before the
/// grids are read, so what saves takes the form twice. Text that stands in the cell editor is
/// committed first.
void PutAnswers(Program& program);

/// Shows the record in the controls and clears `DataChanged`. Error 9 when the zero counts of the
/// record are fewer than three pieces or a grid's count exceeds its lists; what was shown before
/// stays.
void GetAnswers(Program& program);

}  // namespace polefit

#pragma once

#include <array>
#include <string>

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

/// The record that a save would write now, its counts derived. It is read from the form as it
/// stands: the open editor stays open, its text counts as typed; the program's own record and its
/// marks stay as they are. Error 6 for more than 32,766 points.
ResponseRecord RecordOf(const Program& program);

/// What becomes of the zero counts, as their boxes stand, when one is empty; "" when none is.
std::string EmptyCountNote(const std::array<std::string, 3>& counts);

/// Takes what is typed outside of the grids: the answers, both point counts as answers, notes and
/// solver values.
void TakeAnswers(const Program& program, ResponseRecord& record);

}  // namespace polefit

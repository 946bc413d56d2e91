#pragma once

#include "form/state.h"

namespace polefit {

/// Empties the nine solver boxes; the solver then uses its own defaults.
void clearSolvdata(FormView& form);

/// The record's nine solver values into the boxes, and back, unchanged.
void GetSolvAnswers(Program& program);
void PutSolvAnswers(Program& program);

/// "&Edit Defaults" and "&Use Defaults": fill the boxes with the defaults to edit, or empty them.
/// Both focus `Remax`.
void EditSolverDefaults(FormView& form);
void UseSolverDefaults(FormView& form);

}  // namespace polefit

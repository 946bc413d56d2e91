#pragma once

#include "form/form_view.h"
#include "record/response_record.h"

namespace polefit {

/// Empties the nine solver boxes; the solver then uses its own defaults.
void clearSolvdata(FormView& form);

/// The record's nine solver values into the boxes, and back, unchanged.
void GetSolvAnswers(FormView& form, const ResponseRecord& record);
void PutSolvAnswers(const FormView& form, ResponseRecord& record);

/// "&Edit Defaults" and "&Use Defaults": fill the boxes with the defaults to edit, or empty them.
/// Both focus the first box.
void EditSolverDefaults(FormView& form);
void UseSolverDefaults(FormView& form);

}  // namespace polefit

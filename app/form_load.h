#pragma once

#include "form/program.h"

namespace polefit {

/// Everything that loading `frmMain` does, from the empty form to the restored one. An error while
/// the last run's values are shown is passed on when start-up is otherwise complete.
void LoadMainForm(Program& program);

/// Shows the values that the last run left, as those that the form starts with: they belong to no
/// file until they are saved. Without such a file the form's own contents become the record.
void RestoreLastRun(Program& program);

}  // namespace polefit

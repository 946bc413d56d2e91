#pragma once

#include <string>

#include "app/open_look.h"
#include "form/state.h"

namespace polefit {

/// Everything that loading `frmMain` does, from the empty form to the restored one. An error while
/// the last run's values are shown is passed on when start-up is otherwise complete.
void LoadMainForm(Program& program);

/// Takes the values that a run has just left into the form, once changed data are dealt with as
/// for opening a file. Throws RunTimeError, naming their file, when it cannot be opened; the form
/// then keeps its own.
void TakeImprovedValues(Program& program);

/// Opens the file at `path`, a whole path, as the Open command would; one that is not there is
/// reported and changes nothing. One that is none of ours but holds points can go to `import`
/// instead.
void OpenNamedFile(Program& program, const std::string& path, const PointsImport& import = {});

}  // namespace polefit

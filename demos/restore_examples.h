#pragma once

#include "form/state.h"

namespace polefit {

/// Puts the examples back as they were shipped, after a question that names the changed ones; these
/// become former versions.
void RestoreExamples(Program& program);

}  // namespace polefit

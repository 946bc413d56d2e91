#pragma once

#include <vector>

#include "form/state.h"
#include "record/finding.h"

namespace polefit {

/// Judges the form as it stands: what a save would write, and the rows that it would leave out. In
/// the order of the questions. Throws RunTimeError where nothing could be saved.
std::vector<Finding> FindingsOf(const Program& program);

}  // namespace polefit

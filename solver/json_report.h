#pragma once

#include <string>

#include "solver/outcome.h"

namespace polefit {

/// A run as one JSON object in valid UTF-8, ended by a line feed. Locations have their true signs,
/// numbers as many digits as it takes to read them back; where there is no number it is null.
std::string OutcomeAsJson(const RunOutcome& outcome);

}  // namespace polefit

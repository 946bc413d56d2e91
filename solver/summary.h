#pragma once

#include <functional>
#include <ostream>

#include "solver/command_line.h"
#include "solver/outcome.h"

namespace polefit {

/// Runs one of the files, telling errors on the stream.
using RunOne = std::function<RunOutcome(const RunFiles& files, std::ostream& errors)>;

/// Runs all files of the request, as many at once as it says, and tells each in one line, in the
/// order given: a table, or comma-separated values. Files that nobody has begun with when the user
/// asks to stop are left out. The highest exit code.
///
/// The output is the same for any number of runs at once.
Exit RunSummary(const Request& request, const RunOne& run, const std::function<int()>& stopRequests,
                std::ostream& out, std::ostream& err);

}  // namespace polefit

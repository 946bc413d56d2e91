#pragma once

#include <functional>
#include <ostream>
#include <string>

#include "platform/host.h"
#include "solver/command_line.h"
#include "solver/outcome.h"

namespace polefit {

/// Where a run tells what it does, and whom it obeys.
struct Console {
  std::ostream& out;
  std::ostream& err;
  /// How often the user has asked it to stop. At the first time the run ends at the next model
  /// evaluation but the first with the best point so far, at the second without writing anything.
  std::function<int()> stopRequests;
};

/// A text from a file without what a terminal would take for a command.
std::string ForTerminal(std::string text);

/// Reads, solves, and writes the report and the last-run file. The old report is removed first; an
/// output appears under its name only when both are complete. The closing lines are the caller's.
///
/// `allRows` gives long tables of the report all their rows.
RunOutcome SolveFile(Host& host, const RunFiles& files, const Console& console,
                     bool allRows = false);

}  // namespace polefit

#pragma once

#include <string>

#include "form/state.h"

namespace polefit {

/// Starts the solver with the current file, without waiting. Refusals are messages; an unknown
/// folder or a solver that cannot be started is passed on as an error.
void RunSolver(Program& program);

/// The platform's version with two decimals: "4.10".
std::string GetWindowsVer(Host& host);

/// Arranges that the program comes back once after the next log-on, and copies the solver's start
/// script. `executable` is the program's base name. False when an error stopped it.
bool WriteRestartEntry(Program& program, const std::string& executable);

/// Starts the copying of a file, without waiting.
void CopyWithCommand(Host& host, const std::string& source, const std::string& target);

}  // namespace polefit

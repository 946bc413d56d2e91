#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "form/state.h"
#include "platform/command.h"

namespace polefit {

/// A run of the solver, kept in the program folder so that a later start of the program finds it.
struct RunRecord {
  long processId = 0;
  /// When the process started, in the system's ticks; with the id it names one process for good.
  std::uint64_t processStart = 0;
  /// When it was started, in nanoseconds since 1970.
  std::int64_t started = 0;
  std::string dataFile;
  /// The command as one line of text.
  std::string command;

  bool operator==(const RunRecord&) const = default;
};

/// The program folder that a start file lies in.
std::string ProgramFolderOf(const Command& command);

/// Starts `pfit` of the program folder in place of the start file that `command` names, with the
/// same arguments, and records it. Its output replaces the former log. Throws RunTimeError, naming
/// the path, when it cannot be started, and when another run is still going on there; the former
/// log and record then stay.
RunRecord StartRun(const Command& command);

/// The last run of this program folder; nothing when there is no whole record of one.
std::optional<RunRecord> ReadRunRecord(const std::string& programFolder);

bool IsRunning(const RunRecord& run);

/// True when the file was written since the run was started.
bool IsResultOf(const RunRecord& run, const std::string& path);

/// What the solver says while it runs.
std::string RunLogPath(const std::string& programFolder);

/// True when no run is on in the program folder; otherwise says why a second one is refused.
bool MayStartRun(Program& program);

}  // namespace polefit

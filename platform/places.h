#pragma once

#include <string>

#include "platform/paths.h"

namespace polefit {

/// Where things are. The names of the program's own folders and files are typed in this class and
/// nowhere else. Folders have no trailing separator.
struct Places {
  /// The folder above the program's own.
  std::string base;
  /// The program's own folder: settings, examples, and what a run reads and leaves.
  std::string program;
  /// The user's settings of this program, and what it remembers for the user. Neither need exist.
  std::string configuration;
  std::string state;
  /// The folder of the executables, and the base folder as it was shipped. These are the two above,
  /// unless users share an installation and each has base and program folder of his own.
  std::string programs = {};
  std::string shipped = {};

  /// The places of an installation in this base folder.
  static Places Below(const std::string& base);
  /// The places of the running program with these folders.
  static Places Of(Host& host, const std::string& base, const std::string& program);
  /// The state folder alone, for what the program remembers wherever it is installed.
  static Places OfState(Host& host);
  /// Where what was shipped stands.
  Places Shipped() const { return Below(shipped); }

  std::string StartFile() const { return JoinPath(base, "DOSstart.cvx"); }
  std::string StartFileCopy() const { return JoinPath(base, "DOSstart.tmp"); }
  std::string RestartScript() const { return JoinPath(base, "re-start.reg"); }

  std::string Settings() const { return JoinPath(program, kSettingsName); }
  std::string LastRun() const { return JoinPath(program, kLastRunName); }
  std::string Report() const { return JoinPath(program, "~pft-out.txt"); }
  std::string Manual() const { return JoinPath(program, "manual.rtf"); }
  /// The examples as they were shipped.
  std::string Examples() const { return JoinPath(Shipped().program, "Examples"); }
  /// The examples, and the first place for data.
  std::string User() const { return JoinPath(program, "User"); }

  std::string FrontEnd() const { return JoinPath(programs, "polefit"); }
  std::string Solver() const { return JoinPath(programs, kSolverName); }
  /// What the solver's start names in place of the solver itself.
  std::string SolverStart() const { return JoinPath(program, "run-Freq.pif"); }

  /// What the solver says while it runs.
  std::string RunLog() const { return JoinPath(program, "~pft-log.txt"); }
  /// Which run was started last, and how its process ended.
  std::string RunRecord() const { return JoinPath(program, "~pft-run.txt"); }
  std::string RunEnding() const { return JoinPath(program, "~pft-end.txt"); }
  /// Keeps a second solver from the same outputs.
  std::string RunLock() const { return JoinPath(program, "~pft-run.lock"); }

  std::string Recovery() const { return JoinPath(state, "recovery"); }
  std::string Versions() const { return JoinPath(state, "versions"); }
  std::string Recent() const { return JoinPath(state, "recent"); }
  std::string Runs() const { return JoinPath(state, "runs"); }

  static constexpr const char* kSettingsName = "Polefit.ini";
  static constexpr const char* kLastRunName = "last-run.ini";
  static constexpr const char* kSolverName = "pfit";
};

}  // namespace polefit

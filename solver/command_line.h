#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/host.h"

namespace polefit {

/// The files of one run.
struct RunFiles {
  std::string dataFile;    ///< the bare name; empty when the front end has none to give
  std::string dataFolder;  ///< as given
  std::string outputFolder;
  std::string report;
  std::string lastRun;
  std::string lock;

  std::string InputPath() const;
};

/// What the command line asks for.
struct Request {
  enum class Action { run, summary, orders, help, version, usage };
  Action action = Action::usage;
  /// One, but for a summary.
  std::vector<RunFiles> files;
  /// The files as typed.
  std::vector<std::string> names;
  bool json = false;
  bool csv = false;
  bool allRows = false;
  /// How many runs of a summary go on at once.
  int jobs = 1;
  /// The numbers of poles to be tried, from and to.
  int fewestPoles = 0;
  int mostPoles = 0;
};

/// Understands the words behind the program's name. Four words that are the front end's call are
/// names, whatever they begin with: the second and the third are folders, and the fourth is the
/// first two characters of the third. A data folder that is gone still counts as one, so that the
/// report can say so.
Request ParseCommandLine(const std::vector<std::string>& words, Host& host);

/// The text of --help; its first line is the usage.
std::string HelpText();

}  // namespace polefit

#pragma once

#include <optional>
#include <string>
#include <vector>

namespace polefit {

/// The files of one run.
struct RunFiles {
  std::string dataFile;    ///< the bare name
  std::string dataFolder;  ///< as given
  std::string outputFolder;
  std::string report;
  std::string lastRun;
  std::string lock;

  std::string InputPath() const;
};

/// What the command line asks for.
struct Request {
  enum class Action { run, help, version, usage };
  Action action = Action::usage;
  RunFiles files;
};

/// Understands the words behind the program's name.
Request ParseCommandLine(const std::vector<std::string>& words);

/// The text of --help; its first line is the usage.
std::string HelpText();

}  // namespace polefit

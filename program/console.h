#pragma once

#include <optional>
#include <span>
#include <string>

#include "platform/host.h"

namespace polefit {

/// What a command line asks for when it does not end in the console.
struct WindowStart {
  /// A file to open once the window is up, or empty.
  std::string fileToOpen;
  /// Instead of windows a picture of this file's curves is made; with `fileToPlot` empty none is.
  std::string fileToPlot = {};
  std::string picture = {};
};

/// Either the exit code of a command that needs no window, or what the window starts with.
struct CommandLineResult {
  std::optional<int> exitCode;
  WindowStart window;
};

/// Carries out the commands that need no window, on standard output and standard error. `arguments`
/// are those behind the program's name. A wrong command line is exit code 64.
CommandLineResult RunCommandLine(Host& host, std::span<const std::string> arguments);

}  // namespace polefit

#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/host.h"

namespace polefit {

/// What a command line asks for when it does not end in the console.
struct WindowStart {
  /// The first one is opened once the window is up; each other gets a window of its own.
  std::vector<std::string> filesToOpen;
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

/// The body of a main program: what nobody catches is told on standard error and is exit code 1.
int RunGuarded(const std::function<int()>& body);

}  // namespace polefit

#pragma once

#include <string>
#include <vector>

namespace polefit {

enum class WindowStyle { hidden = 0, normal = 1, minimised = 2, maximised = 3 };

/// What a command does. The Host carries it out by this alone; program and arguments are what the
/// command says where it is shown.
enum class CommandKind {
  /// Runs the solver of the installation whose program folder is `object`.
  runSolver,
  /// Imports the registry script `object`: the program comes back at the next log-on.
  importRegistryScript,
  /// Copies the file `object` to `target`.
  copyFile,
  /// Opens the file `object` in the user's text editor.
  editText,
  /// Opens a new message in the mail client for the address `object`, "mailto:...".
  writeMail
};

/// A program to start. Arguments are whole words; nothing splits them again.
struct Command {
  std::string program;
  std::vector<std::string> arguments;
  WindowStyle windowStyle = WindowStyle::normal;
  CommandKind kind = CommandKind::runSolver;
  std::string object = {};
  std::string target = {};

  bool operator==(const Command&) const = default;
};

/// The command as one line of text, for showing. Nothing is quoted in it.
std::string CommandLine(const Command& command);

}  // namespace polefit

#pragma once

#include <string>
#include <vector>

namespace polefit {

enum class WindowStyle { hidden = 0, normal = 1, minimised = 2, maximised = 3 };

/// A program to start. Arguments are whole words; nothing splits them again.
struct Command {
  std::string program;
  std::vector<std::string> arguments;
  WindowStyle windowStyle = WindowStyle::normal;

  bool operator==(const Command&) const = default;
};

/// The command as one line of text, for showing. Nothing is quoted in it.
std::string CommandLine(const Command& command);

}  // namespace polefit

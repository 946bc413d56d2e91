#include "platform/command.h"

namespace polefit {

std::string CommandLine(const Command& command) {
  std::string line = command.program;
  for (const std::string& argument : command.arguments) line += ' ' + argument;
  return line;
}

}  // namespace polefit

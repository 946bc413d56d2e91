#include "program/console_exit.h"

#include <iostream>

#include "base/text.h"
#include "platform/paths.h"

namespace polefit {

ConsoleProgram& Speaker() {
  static ConsoleProgram program;
  return program;
}

void Say(const std::string& message) {
  std::cerr << Speaker().name << ": " << Printable(message) << '\n';
}

int Fail(int exitCode, const std::string& message) {
  Say(message);
  return exitCode;
}

int FailReading(const std::string& path, const RunTimeError& error) {
  const bool missing =
      error.number == error_number::kFileNotFound || error.number == error_number::kPathNotFound;
  return Fail(missing ? kNoSuchFile : kCannotRead, "cannot read '" + path + "': " + InWords(error));
}

int WrongUsage() {
  return Fail(kWrongUsage,
              "unknown option or wrong arguments; '" + Speaker().name + " --help' tells them");
}

ResponseTarget TargetOf(const std::string& path) {
  return {FolderOf(path), CutPath(path).name};
}

}  // namespace polefit

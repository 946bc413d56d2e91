#pragma once

#include <string>

#include "base/run_time_error.h"
#include "responsefile/writer.h"

namespace polefit {

/// How the commands of the console end; 0 is done.
inline constexpr int kUncaught = 1;
inline constexpr int kNothingUsable = 1;
inline constexpr int kCannotRead = 2;
inline constexpr int kNoSuchFile = 3;
inline constexpr int kCannotWrite = 4;
inline constexpr int kWrongUsage = 64;

/// The program that the console's commands are called by.
struct ConsoleProgram {
  std::string name = "polefit";
  bool hasWindow = true;
};

/// What is set is kept for the whole process.
ConsoleProgram& Speaker();

/// Says a line on standard error, control characters in a form that can be shown.
void Say(const std::string& message);

/// Says on standard error why a command ends, and gives its exit code.
int Fail(int exitCode, const std::string& message);
int FailReading(const std::string& path, const RunTimeError& error);
int WrongUsage();

/// Where a Response Input File goes that is written to `path`.
ResponseTarget TargetOf(const std::string& path);

}  // namespace polefit

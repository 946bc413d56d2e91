#pragma once

#include <string>

#include "base/run_time_error.h"
#include "platform/host.h"

namespace polefit {

/// What differs between the routines that share the error template.
struct ErrorTable {
  /// The name in the titles: "In 'FileOld' routine ...".
  std::string routine;
  /// What an unavailable drive or path is called; read when the error is shown.
  const std::string& unavailableName;
  /// The style of that message.
  int unavailableStyle = message_style::kExclamation;
};

/// What a routine does after an error has been reported.
enum class AfterError { retry, skip, leave };

/// "In 'FileOld' routine ..."
std::string RoutineTitle(const std::string& routine);

/// Shows "Unexpected error #" with number and description.
void ReportUnexpected(Host& host, const RunTimeError& error, const std::string& routine);

/// Reports an error by its number: 71 asks for the medium (retry or skip), 68 names the path
/// (retry), 32755 is silent (leave), any other is shown and ends the program.
AfterError ReportError(Host& host, const RunTimeError& error, const ErrorTable& table);

enum class StepResult { done, skipped, left };

/// Runs one step of a routine under the template, again for as long as a retry is answered.
template <typename Step>
StepResult RunStep(Host& host, const ErrorTable& table, Step step) {
  for (;;) {
    try {
      step();
      return StepResult::done;
    } catch (const RunTimeError& error) {
      const AfterError after = ReportError(host, error, table);
      if (after != AfterError::retry) {
        return after == AfterError::skip ? StepResult::skipped : StepResult::left;
      }
    }
  }
}

}  // namespace polefit

#pragma once

#include <optional>
#include <string>

#include "form/state.h"
#include "record/response_record.h"

namespace polefit {

/// The result that the last run left.
struct LastResult {
  ResponseRecord record;
  /// The name of the file that the run read.
  std::string file;
  /// Whether the form asks for something else by now: other points, or another answer than the
  /// locations and the gain, which the run itself has changed.
  bool isOutdated = false;
};

/// Nothing when no run has left a result yet. Throws RunTimeError when it cannot be read.
std::optional<LastResult> ReadLastResult(Program& program);

}  // namespace polefit

#pragma once

#include <cstdint>
#include <string>

#include "record/response_record.h"

namespace polefit {

/// The data that the form shows, and what the program remembers of them.
struct Document {
  ResponseRecord record = {};
  /// 1 after any edit, 0 once a record is shown and at the end of start-up.
  std::int16_t DataChanged = 0;
  /// " " at start, "*" for a user's run, "Demo" for a demo.
  std::string RunMode = " ";
  /// What was last said of characters that a file could not hold.
  std::string lastToldLoss = {};
};

}  // namespace polefit

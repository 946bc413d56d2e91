#pragma once

#include "platform/run_time_error.h"

namespace polefit::testing {

/// The number of the run-time error that `action` throws, 0 when it throws none.
template <typename Action>
int ErrorOf(Action action) {
  try {
    action();
  } catch (const RunTimeError& error) {
    return error.number;
  }
  return 0;
}

}  // namespace polefit::testing

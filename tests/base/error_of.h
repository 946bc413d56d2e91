#pragma once

#include "base/run_time_error.h"

namespace polefit::testing {

/// The run-time error that `action` throws; number 0 when it throws none.
template <typename Action>
RunTimeError ThrownBy(Action action) {
  try {
    action();
  } catch (const RunTimeError& error) {
    return error;
  }
  return {};
}

/// Its number alone.
template <typename Action>
int ErrorOf(Action action) {
  return ThrownBy(action).number;
}

}  // namespace polefit::testing

#pragma once

#include "grids/fake_grid.h"
#include "record/response_record.h"

namespace polefit::testing {

/// Gives both grids of `record` `count` points as a file brings them.
inline void SetPoints(ResponseRecord& record, int count) {
  FillPoints(record.passband, count);
  FillPoints(record.delay, count);
  record.Slot(slot::kFreqPointCount) = record.Slot(slot::kDelayPointCount) =
      " " + std::to_string(count);
}

}  // namespace polefit::testing

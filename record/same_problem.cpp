#include "record/same_problem.h"

#include <algorithm>

namespace polefit {

namespace {

template <std::size_t Columns>
bool HaveSameRows(const PointLists<Columns>& one, const PointLists<Columns>& other, int rows) {
  for (int row = 1; row <= rows; ++row) {
    for (int column = 1; column <= static_cast<int>(Columns); ++column) {
      if (one.At(row, column) != other.At(row, column)) return false;
    }
  }
  return true;
}

}  // namespace

bool HaveSamePoints(const ResponseRecord& one, const ResponseRecord& other) {
  return one.nFreqPoints == other.nFreqPoints &&
         HaveSameRows(one.passband, other.passband, one.nFreqPoints);
}

bool StateSameProblem(const ResponseRecord& one, const ResponseRecord& other) {
  for (int slot = 1; slot < slot::kFreqPointCount; ++slot) {
    const bool isFound =
        std::find(kFoundSlots.begin(), kFoundSlots.end(), slot) != kFoundSlots.end();
    if (!isFound && one.Slot(slot) != other.Slot(slot)) return false;
  }
  return one.nDelayPoints == other.nDelayPoints && HaveSamePoints(one, other) &&
         HaveSameRows(one.delay, other.delay, one.nDelayPoints);
}

}  // namespace polefit

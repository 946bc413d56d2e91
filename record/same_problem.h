#pragma once

#include <array>

#include "record/response_record.h"

namespace polefit {

/// The answers that a run finds: the locations and the gain.
inline constexpr std::array kFoundSlots = {
    static_cast<int>(slot::kSigmaPoles), static_cast<int>(slot::kPoleReal),
    static_cast<int>(slot::kPoleImag),   static_cast<int>(slot::kSigmaZero),
    static_cast<int>(slot::kYzero),      static_cast<int>(slot::kZreal),
    static_cast<int>(slot::kZimag),      static_cast<int>(slot::kGain)};

/// Whether two records state one problem, whatever their locations and gain.
bool StateSameProblem(const ResponseRecord& one, const ResponseRecord& other);

/// Whether their passband points are the same, cell by cell.
bool HaveSamePoints(const ResponseRecord& one, const ResponseRecord& other);

}  // namespace polefit

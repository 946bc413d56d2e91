#pragma once

#include <vector>

#include "record/finding.h"
#include "record/response_record.h"
#include "responsefile/reader.h"

namespace polefit {

/// What can be solved, but was probably not meant: ticks that are none, frequencies out of order or
/// in another unit, a Freq Norm or a zero that does not fit the points, answers that a file will
/// not give back, rows with too many cells. Adds warnings and puts all findings into the order of
/// the questions.
void FindTypingSlips(const ResponseRecord& record, const std::vector<LongRow>& longRows,
                     std::vector<Finding>& findings);

}  // namespace polefit

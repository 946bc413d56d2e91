#pragma once

#include <optional>

#include "record/response_record.h"

namespace polefit {

/// The record with starting values from the points in those of questions 7 to 11c that are in use
/// and empty, or whose list does not match its count; both lists of a pair are replaced together.
/// Nothing where there is none such, or where other answers have a fault.
std::optional<ResponseRecord> WithSuggestedStart(const ResponseRecord& record);

}  // namespace polefit

#pragma once

#include <vector>

#include "record/finding.h"
#include "record/response_record.h"

namespace polefit {

/// What can be solved, but was probably not meant: units mixed up, decibels, and answers that a
/// file will not give back. Appends warnings in question order.
void FindTypingSlips(const ResponseRecord& record, std::vector<Finding>& findings);

}  // namespace polefit

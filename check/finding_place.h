#pragma once

#include "form/history.h"
#include "record/finding.h"

namespace polefit {

/// Where on the main form a finding stands; no control for the problem as a whole.
FormPlace PlaceOnForm(const FindingPlace& place);

/// Where it stands in words: "question 11a", "passband row 3"; "" for the problem as a whole.
std::string PlaceText(const FindingPlace& place);

/// "2 faults, 1 warning, 3 open", "" for nothing.
std::string CountText(const std::vector<Finding>& findings);

}  // namespace polefit

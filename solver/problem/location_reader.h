#pragma once

#include "record/response_record.h"
#include "solver/problem/answers.h"
#include "solver/problem/problem.h"

namespace polefit {

/// Takes counts, factors, typed parameters and bounds from the questions 6 to 14, and the
/// omega-axis zeros that LYNX is to move. A list whose count has a fault is not looked at. Faults
/// go to `answers`.
void ReadLocations(const ResponseRecord& record, AnswerReader& answers, Problem& problem);

}  // namespace polefit

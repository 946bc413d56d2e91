#pragma once

#include "record/response_record.h"
#include "solver/problem/answers.h"
#include "solver/problem/options.h"

namespace polefit {

/// Takes the nine controls from the solver settings. What is empty or has a fault keeps its
/// default. Faults go to `answers`.
void ReadOptions(const ResponseRecord& record, AnswerReader& answers, Options& options);

}  // namespace polefit

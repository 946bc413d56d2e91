#pragma once

#include "record/response_record.h"
#include "solver/problem/answers.h"
#include "solver/problem/problem.h"

namespace polefit {

/// Takes the points of both tables, the units that they are typed in, and the rows of the error
/// measures. The answers on delay, weights, input power and Freq Norm must stand in the problem.
/// Faults go to `answers`.
void ReadPoints(const ResponseRecord& record, AnswerReader& answers, Problem& problem);

}  // namespace polefit

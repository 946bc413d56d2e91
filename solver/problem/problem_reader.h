#pragma once

#include "record/response_record.h"
#include "solver/problem/answers.h"
#include "solver/problem/problem.h"

namespace polefit {

/// Turns the answers into a problem. Answers that are not in use are not looked at. All faults
/// are collected; with any of them the problem cannot be solved.
Problem ReadProblem(const ResponseRecord& record, std::vector<Finding>& findings);

/// The poles, zeros, bounds, Freq Norm and gain alone, without points; whatever else is wrong with
/// the record.
Problem ReadConstellation(const ResponseRecord& record, std::vector<Finding>& findings);

}  // namespace polefit

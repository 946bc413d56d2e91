#pragma once

#include "record/response_record.h"
#include "solver/problem/problem.h"
#include "solver/search/evaluator.h"

namespace polefit {

/// The factors of one kind in the order in which locations are written: sigma-axis poles and
/// omega-axis zeros ascending, pairs by ascending imaginary part.
std::vector<std::size_t> SortedFactors(const Problem& problem, const Iterate& iterate,
                                       FactorKind kind);

/// The record with the answers that the run has found in place of the typed locations and gain;
/// everything else as it was read.
ResponseRecord LastRunRecord(const ResponseRecord& record, const Problem& problem,
                             const Iterate& iterate);

}  // namespace polefit

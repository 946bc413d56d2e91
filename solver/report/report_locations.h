#pragma once

#include "solver/report/report.h"
#include "solver/report/report_text.h"

namespace polefit {

/// The poles and zeros found, each with its Q and its standard deviation.
void ReportLocations(const SolvedProblem& solved, ReportText& text);

/// The parts of locations that stand on a bound or are held, and what another structure of H(s)
/// promises.
void ReportBounds(const SolvedProblem& solved, ReportText& text);

}  // namespace polefit

#pragma once

#include "solver/report/report.h"
#include "solver/report/report_text.h"

namespace polefit {

/// The problem as it was read: the answers in use, its size, the solver settings.
void ReportProblem(const SolvedProblem& solved, ReportText& text);

/// How the starts went, and the lines that STEPOUT and DETAIL ask for.
void ReportIterations(const SolvedProblem& solved, ReportText& text);

}  // namespace polefit

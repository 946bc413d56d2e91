#pragma once

#include "solver/report/report.h"
#include "solver/report/report_text.h"

namespace polefit {

/// The passband points beside what H(s) makes of them.
void ReportPassband(const SolvedProblem& solved, ReportText& text);

/// The delay points, the delay of H and their sum. Only where delay is equalised.
void ReportDelay(const SolvedProblem& solved, ReportText& text);

/// The highest |H| above each omega-axis zero; nothing where there is none.
void ReportSidelobes(const SolvedProblem& solved, ReportText& text);

/// Where the constant T0 comes from: question 1a, or the best fit.
const char* ConstantNote(const Problem& problem);

}  // namespace polefit

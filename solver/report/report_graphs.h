#pragma once

#include "solver/report/report.h"
#include "solver/report/report_text.h"

namespace polefit {

/// The fit, and the delay where it is equalised, drawn with characters.
void ReportGraphs(const SolvedProblem& solved, ReportText& text);

}  // namespace polefit

#pragma once

#include <string>
#include <vector>

#include "record/finding.h"
#include "record/response_record.h"
#include "solver/problem/answers.h"
#include "solver/problem/problem.h"
#include "solver/report/figures.h"
#include "solver/report/journal.h"
#include "solver/report/report_text.h"
#include "solver/search/search.h"

namespace polefit {

/// What the head of every report tells, whether the problem was run or not.
struct ReportHead {
  std::string dataFile;
  std::string dataFolder;
  std::string date;
  double seconds = 0;
  /// "converged (6 of 8 starts agree)" and so on.
  std::string result;
};

/// A solved problem with everything that the report shows of it.
struct SolvedProblem {
  const ResponseRecord& record;
  const Problem& problem;
  const Summary& summary;
  const Figures& figures;
  const Journal& journal;
  const std::vector<Finding>& findings;
  /// Whether long tables are to have all their rows.
  bool allRows = false;
};

/// The result in one line: "converged (6 of 8 starts agree)" or why the run stopped.
std::string ResultText(const Summary& summary);

/// The whole report of a run.
std::vector<std::string> FullReport(const ReportHead& head, const SolvedProblem& solved);

/// The report of a problem without an answer: the head, the faults, at most 20, and the warnings.
std::vector<std::string> FailureReport(const ReportHead& head,
                                       const std::vector<Finding>& findings);

}  // namespace polefit

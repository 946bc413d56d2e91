#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/host.h"
#include "record/finding.h"
#include "record/response_record.h"
#include "responsefile/reader.h"
#include "solver/outcome.h"

namespace polefit {

/// Why there is no fit.
struct Failure {
  Exit exit = Exit::converged;
  /// What stands behind "Result:".
  std::string result;
  std::vector<Finding> findings;
};

/// Reads the problem at `path` into `record`, rows with too few cells as they are. The record's
/// LastFileName is the value of line 1. Returns what made the file unreadable, if anything.
/// Rows with too many cells go to `longRows`.
std::optional<Failure> ReadDataFile(Host& host, const std::string& path, ResponseRecord& record,
                                    std::vector<LongRow>* longRows = nullptr);

/// The failure of a run that was given no file.
Failure NoDataFile();

/// The failure of a problem whose answers cannot be run. There may be warnings among the findings.
Failure Refusal(std::vector<Finding> findings);

}  // namespace polefit

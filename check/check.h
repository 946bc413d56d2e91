#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/host.h"
#include "record/finding.h"
#include "record/response_record.h"
#include "responsefile/reader.h"

namespace polefit {

/// What the reader understood of a Response Input File, and what stands out in it.
struct CheckedFile {
  std::string path;
  /// As the form would have it: read up to the error, where there is one.
  ResponseRecord record;
  /// The last-used folder as reading left it.
  std::string folder;
  /// The error that ended the reading before its end, and the line it came at (from 1).
  std::optional<RunTimeError> error;
  int errorLine = 0;
  /// What would make a run fail or surprise, in the order of the questions.
  std::vector<Finding> findings;
};

/// Reads and judges the file. Throws RunTimeError when it cannot be opened.
CheckedFile CheckResponseFile(Host& host, const std::string& path);

/// Judges a record, which may come from a file with these rows: what would make a run fail or
/// surprise, in the order of the questions.
std::vector<Finding> FindingsIn(const ResponseRecord& record,
                                const std::vector<LongRow>& longRows = {});

}  // namespace polefit

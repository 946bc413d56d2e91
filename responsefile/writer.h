#pragma once

#include <string>
#include <string_view>

#include "platform/host.h"
#include "record/response_record.h"

namespace polefit {

/// Writes one answer line to the shared file: the value ("-999" when empty), two tabs, "! " and
/// the first 50 characters of the label.
void WriteAnswerLine(Host& host, std::string_view value, std::string_view label);

/// Where a Response Input File goes.
struct ResponseTarget {
  std::string folder;
  /// The bare name, which line 1 carries. When it is the full path of the start-up state file,
  /// that path is written as it stands and line 1 carries the record's LastFileName.
  std::string name;
  /// The full path of the start-up state file, or empty.
  std::string lastRunPath = {};
};

/// Sets what a saved file derives from the rest of the record: the two count answers from the
/// points, and the solver count, 9 or, when the first three solver values are empty, 0.
void DeriveCounts(ResponseRecord& record);

/// Writes `record` as a Response Input File, its counts derived first. Returns the number of
/// characters that the code page lacks and that stand as "?" in the file. On an error the partial
/// file and the former one stay on disk, the latter under the name with "~", and the error is
/// passed on.
int WriteResponseFile(Host& host, ResponseRecord& record, const ResponseTarget& target);

}  // namespace polefit

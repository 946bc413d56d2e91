#pragma once

#include <string>
#include <string_view>

#include "platform/host.h"
#include "record/response_record.h"

namespace polefit {

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

/// The bytes of such a file with `name` on its first line, for where no file is wanted.
std::string ResponseFileBytes(Host& host, ResponseRecord& record, const std::string& name);

}  // namespace polefit

#pragma once

#include <optional>
#include <string>

#include "form/cells.h"
#include "responsefile/reader.h"

namespace polefit {

/// Says that the file just opened was read in part and offers to show again what was there before.
void TellPartRead(Program& program, const ReadStop& stop, FormCells before);

/// Says that the last run's values were read in part and offers to delete their file.
void TellLastRunPartRead(Program& program, const ReadStop& stop);

/// The same of a file that is missing or does not read to its end; nothing when it is whole.
std::optional<std::string> FormerContentOfTorn(Host& host, const std::string& path);

/// Where a save did not end, its former content may stand beside the file under the name with "~":
/// says so when the file at `path` is missing or does not read to its end.
void LookForFormerContent(Program& program, const std::string& path);

/// The same for every file of a folder.
void LookForFormerContents(Program& program, const std::string& folder);

}  // namespace polefit

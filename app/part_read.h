#pragma once

#include <optional>
#include <string>

#include "form/cells.h"
#include "responsefile/reader.h"

namespace polefit {

/// How far a file was read into `record`: "ends before answer line 19", "was read in part, up to
/// row 3".
std::string HowFarRead(const ResponseRecord& record, const ReadStop& stop);

/// Says that the file just opened was read in part and offers to show again what was there before.
void TellPartRead(Program& program, const ReadStop& stop, FormCells before);

/// Says that the last run's values were read in part and offers to delete their file.
void TellLastRunPartRead(Program& program, const ReadStop& stop);

/// Where the former content of a file stands that a save has not ended: the name with "~", or with
/// one more for each that was taken. Nothing when there is none.
std::optional<std::string> FormerContentOf(Host& host, const std::string& path);

/// The same of a file that is missing or does not read to its end; nothing when it is whole.
std::optional<std::string> FormerContentOfTorn(Host& host, const std::string& path);

/// Where a save did not end, its former content may stand beside the file under the name with "~":
/// says so when the file at `path` is missing or does not read to its end.
void LookForFormerContent(Program& program, const std::string& path);

/// The same for every file of a folder.
void LookForFormerContents(Program& program, const std::string& folder);

}  // namespace polefit

#include "exchange/last_result.h"

#include "form/transfer.h"
#include "record/same_problem.h"
#include "responsefile/reader.h"

namespace polefit {

std::optional<LastResult> ReadLastResult(Program& program) {
  const std::string& path = program.folders.LastRunPath;
  if (path.empty() || program.host.LookUpFile(path).empty()) return std::nullopt;
  LastResult result;
  std::string folder;
  program.host.OpenForReading(path);
  try {
    ReadResponse(program.host, result.record, result.file, folder);
  } catch (const RunTimeError&) {
    program.host.CloseFile();
    throw;
  }
  program.host.CloseFile();
  result.isOutdated = !StateSameProblem(result.record, RecordOf(program));
  return result;
}

}  // namespace polefit

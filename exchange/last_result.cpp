#include "exchange/last_result.h"

#include <set>

#include "form/transfer.h"
#include "responsefile/reader.h"

namespace polefit {

namespace {

bool IsFound(int slot) {
  static const std::set<int> kFound = {slot::kSigmaPoles, slot::kPoleReal, slot::kPoleImag,
                                       slot::kSigmaZero,  slot::kYzero,    slot::kZreal,
                                       slot::kZimag,      slot::kGain};
  return kFound.contains(slot);
}

template <std::size_t Columns>
bool HaveSameRows(const PointLists<Columns>& one, const PointLists<Columns>& other, int rows) {
  for (int row = 1; row <= rows; ++row) {
    for (int column = 1; column <= one.kColumns; ++column) {
      if (one.At(row, column) != other.At(row, column)) return false;
    }
  }
  return true;
}

bool AskTheSame(const ResponseRecord& one, const ResponseRecord& other) {
  for (int slot = 1; slot < slot::kFreqPointCount; ++slot) {
    if (!IsFound(slot) && one.Slot(slot) != other.Slot(slot)) return false;
  }
  return one.nFreqPoints == other.nFreqPoints && one.nDelayPoints == other.nDelayPoints &&
         HaveSameRows(one.passband, other.passband, one.nFreqPoints) &&
         HaveSameRows(one.delay, other.delay, one.nDelayPoints);
}

}  // namespace

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
  result.isOutdated = !AskTheSame(result.record, RecordOf(program));
  return result;
}

}  // namespace polefit

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/host.h"
#include "platform/places.h"

namespace polefit {

/// A run of the solver, kept in the program folder so that a later start of the program finds it.
struct RunRecord {
  ProcessName process;
  /// When it was started, in milliseconds since 1970 by this computer's clock.
  std::int64_t started = 0;
  /// The same by the clock of the program folder's file system, in nanoseconds: results are newer.
  std::int64_t stamp = 0;
  /// How often it was asked to stop.
  int stops = 0;
  /// The solver and its arguments, the first of which are the data file and its folder.
  std::vector<std::string> words;

  std::string DataFile() const { return words.size() > 1 ? words[1] : std::string(); }
  std::string DataFolder() const { return words.size() > 2 ? words[2] : std::string(); }

  bool operator==(const RunRecord&) const = default;
};

/// The last run of this program folder; nothing when there is no whole record of one.
std::optional<RunRecord> ReadRunRecord(Host& host, const Places& places);

/// Throws RunTimeError.
void WriteRunRecord(Host& host, const Places& places, const RunRecord& run);

/// The process of the run. Nothing when it has ended, or when the process of that name was never
/// started as this run: anybody may have written the record.
std::optional<ProcessState> ProcessOf(Host& host, const RunRecord& run, const Places& places);

/// True when the file was written since the run was started.
bool IsResultOf(Host& host, const RunRecord& run, const std::string& path);

/// Why a second run is refused while this one is on.
std::string RefusalOf(const RunRecord& run);

/// True when no run is on in the program folder; otherwise says why a second one is refused.
bool MayStartRun(Host& host, const Places& places);

}  // namespace polefit

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace polefit {

/// Starts a program that outlives this one, in a process group of its own that bears its process
/// id, which is returned. `words` are the program, looked for in PATH when it has no separator, and
/// its arguments. Its output is appended to `outputPath`, or dropped when that is empty. Throws
/// RunTimeError, naming the program, when it cannot be started.
long StartDetached(const std::vector<std::string>& words, const std::string& outputPath = {});

/// When a process started, in the system's ticks: with the process id it names one process for
/// good. Nothing when there is none or it has ended.
std::optional<std::uint64_t> StartOfProcess(long processId);

/// Waits for the end of any process, with no time limit.
void WaitForEnd(long processId);

/// Asks the process group to end, or makes it end at once. A group that is gone is left alone.
void EndGroup(long processGroup, bool atOnce);

}  // namespace polefit

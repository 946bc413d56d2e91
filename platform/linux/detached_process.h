#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/processes.h"

namespace polefit {

/// Starts a program as Processes::StartProcess says.
ProcessName StartDetached(const ProcessStart& start);

/// What is known of a process; nothing when there is none or it has ended.
std::optional<ProcessState> LookAtProcess(long processId);

/// Waits for the end of any process, with no time limit; `meanwhile` runs every 50 ms.
void WaitForEnd(
    long processId, const std::function<void()>& meanwhile = [] {});

/// Ends a process group as Processes::EndGroup says.
bool EndProcessGroup(long processGroup, bool atOnce);

}  // namespace polefit

#pragma once

#include <string>

namespace polefit {

/// Lets the desktop start `program` once, at the next log-on: an autostart entry that removes
/// itself when it runs. An entry that is there already is replaced. Throws RunTimeError when it
/// cannot be written.
void WriteAutostartEntry(const std::string& program);

/// Takes the entry back, if it is there.
void WithdrawAutostartEntry();

/// Where that entry lies, in the folder of the user's settings.
std::string AutostartEntryPath();

}  // namespace polefit

#pragma once

#include <string>

#include "form/state.h"

namespace polefit {

/// "Polefit.ini" in the program folder.
std::string SettingsPath(const Program& program);

/// Takes `CommandDelay` from the settings file: 0 when its line holds no number. A missing third
/// line is empty; any other failure throws RunTimeError.
void ReadSettingsFile(Program& program);

/// Writes the settings file anew: a header with today's date, then `CommandDelay`.
void WriteSettingsFile(Program& program);

}  // namespace polefit

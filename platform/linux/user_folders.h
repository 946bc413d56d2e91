#pragma once

#include <string>

namespace polefit {

/// The folders that the desktop gives a user for settings and for programs' data. A variable that
/// names no whole path does not count.
std::string UserConfigurationFolder();
std::string UserDataFolder();

/// This program's folders among the settings and among what programs remember.
std::string OwnConfigurationFolder();
std::string OwnStateFolder();

/// This program's folder in the one that the desktop clears when the user's session ends; the
/// state folder where there is none.
std::string OwnRuntimeFolder();

}  // namespace polefit

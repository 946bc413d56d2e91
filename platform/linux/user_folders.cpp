#include "platform/linux/user_folders.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "platform/paths.h"

namespace polefit {

namespace {

/// The folder that a variable names, else the one below the home folder.
std::string FolderFrom(const char* variable, std::string_view belowHome) {
  const char* const value = std::getenv(variable);
  if (value != nullptr && *value == kSeparator) return value;
  const char* const home = std::getenv("HOME");
  return JoinPath(home != nullptr && *home == kSeparator ? home : "", belowHome);
}

constexpr std::string_view kOwnName = "polefit";

}  // namespace

std::string UserConfigurationFolder() {
  return FolderFrom("XDG_CONFIG_HOME", ".config");
}

std::string UserDataFolder() {
  return FolderFrom("XDG_DATA_HOME", ".local/share");
}

std::string OwnConfigurationFolder() {
  return JoinPath(UserConfigurationFolder(), kOwnName);
}

std::string OwnStateFolder() {
  return JoinPath(FolderFrom("XDG_STATE_HOME", ".local/state"), kOwnName);
}

std::string OwnRuntimeFolder() {
  const char* const value = std::getenv("XDG_RUNTIME_DIR");
  const bool isThere =
      value != nullptr && *value == kSeparator && ::access(value, W_OK | X_OK) == 0;
  return isThere ? JoinPath(value, kOwnName) : OwnStateFolder();
}

}  // namespace polefit

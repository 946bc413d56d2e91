#pragma once

#include <optional>
#include <string>

#include "platform/file_system.h"

namespace polefit {

/// The folder of the running executable.
std::string ExecutableFolder();

/// The installation with its executables in `programs`, when users share it: a package has left its
/// mark there, or this user may not write there.
std::optional<Installation> SharedInstallationWith(const std::string& programs);

/// The program's own folder: `programs`, or the user's own when users share the installation.
std::string OwnFolderFor(const std::string& programs);

}  // namespace polefit

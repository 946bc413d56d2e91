#pragma once

#include <string>
#include <vector>

#include "platform/file_system.h"

namespace polefit {

/// Makes a folder and those that it lies in, where they are missing. Throws RunTimeError.
void MakeFoldersTo(const std::string& folder, Readers readers);

/// Makes `path` a link to `target`, in place of another link; a file of that name stays. Throws
/// RunTimeError.
void LinkTo(const std::string& target, const std::string& path);

/// The names of the regular files in a folder, in byte order; none when there is no such folder.
/// Other failures throw RunTimeError.
std::vector<std::string> RegularFilesIn(const std::string& folder);

}  // namespace polefit

#pragma once

#include <string>

#include "platform/host.h"

namespace polefit {

/// True when the path names a normal file; "*" and "?" make it a pattern. Case counts.
/// Errors of the look-up are reported here; one that is not foreseen ends the program.
bool FileExists(Host& host, const std::string& path);

/// True when the folder exists. Errors as for FileExists.
bool dirExists(Host& host, const std::string& folder);

/// Removes a file; that it is not there is no error. Others throw RunTimeError.
void RemoveFile(FileSystem& files, const std::string& path);

}  // namespace polefit

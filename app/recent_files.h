#pragma once

#include <string>
#include <vector>

#include "platform/host.h"

namespace polefit {

/// A file that was opened or saved under its name a while ago.
struct RecentFile {
  std::string path;
  bool isThere = true;
};

/// The last ten of this user, the latest first.
std::vector<RecentFile> RecentFiles(Host& host);

/// Puts the file at `path` first. A list that cannot be written stays as it is.
void NoteRecentFile(Host& host, const std::string& path);

}  // namespace polefit

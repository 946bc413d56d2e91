#pragma once

#include <string>
#include <vector>

#include "app/version_store.h"

namespace polefit {

/// One former version as a list shows it.
struct VersionLine {
  Version version;
  /// "12 points", "not saved, 12 points", "no whole Response Input File".
  std::string content;
  std::string firstLine;
  bool canPutBack = true;
  bool canOpen = true;
};

/// The former versions of the file at `path`, the newest first. One that cannot be read says why.
std::vector<VersionLine> ListVersions(Host& host, const std::string& path);

}  // namespace polefit

#pragma once

#include <optional>
#include <string>

#include "platform/host.h"

namespace polefit {

/// What is asked before the file at `path` is opened as a Response Input File: nothing when it
/// looks like one, and nothing when it cannot be read, which the command itself tells.
std::optional<Choice> DoubtAbout(Host& host, const std::string& path);

}  // namespace polefit

#pragma once

#include <string>
#include <string_view>

#include "platform/host.h"

namespace polefit {

/// Writes a whole file, or to standard output for "-". Gives the exit code, and says on standard
/// error why it is not 0.
int WriteOutput(Host& host, const std::string& out, std::string_view bytes);

}  // namespace polefit

#pragma once

#include <span>
#include <string>

#include "platform/host.h"

namespace polefit {

/// `polefit --import ...`: brings the points of a measured file into a Response Input File.
/// `words` are those behind "--import". The exit code is 0; 1 when nothing could be taken or a
/// guess is unsure; 2 when a file could not be read to its end; 3 when there is none; 4 when the
/// output cannot be written; 64 for a wrong command line. The output file stays untouched until
/// everything that goes into it is ready.
int ImportCommand(Host& host, std::span<const std::string> words);

}  // namespace polefit

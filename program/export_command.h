#pragma once

#include <span>
#include <string>

#include "platform/host.h"

namespace polefit {

/// `polefit --export FORMAT FILE OUT [--points data]`: writes the poles, zeros and gain that the
/// answers of a Response Input File hold in another program's format. The exit code is 0; 1 for
/// answers without a result; 2 when FILE could not be read to its end; 3 when there is none; 4 when
/// OUT cannot be written; 64 for a wrong command line.
int ExportCommand(Host& host, std::span<const std::string> words);

}  // namespace polefit

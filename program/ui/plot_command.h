#pragma once

#include <string>

#include "platform/host.h"

namespace polefit {

/// Draws all curves of a Response Input File into `out`, a PNG, SVG or PDF by its ending, and tells
/// on standard error why not. The exit code: 0 done, 1 faulty answers, 2 not read to its end, 3 no
/// such file, 4 `out` cannot be written. `out` is replaced only when the picture is ready.
int PlotFile(Host& host, const std::string& file, const std::string& out);

}  // namespace polefit

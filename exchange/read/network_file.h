#pragma once

#include <string_view>

#include "exchange/read/table.h"

namespace polefit {

/// Whether a file holds network parameters (Touchstone, version 1 or 2): by its name's ending,
/// .s2p and the like or .ts, else by a "[Version]" or an option line ("# MHz S DB R 50").
bool IsNetworkFile(std::string_view name, std::string_view text);

/// Reads a network file. The first column is the frequency; each parameter has two columns. The
/// number of ports is that of the name's ending, else what the rows' length tells. Noise data are
/// left out, and said so.
SourceTable ReadNetworkFile(std::string_view name, std::string_view text);

}  // namespace polefit

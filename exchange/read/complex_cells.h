#pragma once

#include <string>
#include <string_view>

namespace polefit {

/// Circuit simulators write a complex number as one cell beside a tab: "(-3.0dB,-45°)" or
/// "0.7,-0.7". The text with two cells instead of each such one, and two headings ("... dB" and
/// "... deg", "... re" and "... im"); "" when the first lines hold none.
std::string ComplexCellsAsColumns(std::string_view text);

}  // namespace polefit

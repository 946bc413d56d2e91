#include "grids/format_string.h"

#include <algorithm>

namespace polefit {

namespace {

/// Calls `take` with each cell of a part.
template <typename Take>
void ForEachCell(std::string_view part, Take take) {
  while (true) {
    const std::size_t end = part.find('|');
    take(part.substr(0, end));
    if (end == std::string_view::npos) return;
    part.remove_prefix(end + 1);
  }
}

}  // namespace

GridFormat ParseFormatString(std::string_view format) {
  const std::size_t columnEnd = std::min(format.find(';'), format.size());
  GridFormat result;
  ForEachCell(format.substr(0, columnEnd), [&](std::string_view cell) {
    const bool centred = cell.starts_with('^');
    result.columns.push_back({std::string(cell.substr(centred ? 1 : 0)), centred});
  });
  if (columnEnd == format.size()) return result;
  ForEachCell(format.substr(columnEnd + 1),
              [&](std::string_view cell) { result.rowHeaders.emplace_back(cell); });
  return result;
}

}  // namespace polefit

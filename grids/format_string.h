#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace polefit {

struct ColumnTitle {
  std::string text;
  bool centred = false;
};

/// What a grid's format string says: "#|^Frequency|^Yin;#|1|2" has the column titles before the
/// ";" and the row headers after it, the header row's own first.
struct GridFormat {
  std::vector<ColumnTitle> columns;
  std::vector<std::string> rowHeaders;
};

GridFormat ParseFormatString(std::string_view format);

}  // namespace polefit

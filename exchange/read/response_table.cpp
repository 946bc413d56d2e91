#include "exchange/read/response_table.h"

#include <string_view>
#include <vector>

namespace polefit {

namespace {

template <std::size_t Columns>
void AddRows(const PointLists<Columns>& points, int count, SourceTable& table) {
  std::vector<std::string_view> cells(Columns);
  for (int row = 1; row <= count; ++row) {
    for (int column = 1; column <= points.kColumns; ++column) {
      cells[static_cast<std::size_t>(column) - 1] = points.At(row, column);
    }
    table.AddRow(row, cells);
  }
}

Column ColumnOf(const char* heading) {
  return {heading, MeaningOf(heading)};
}

}  // namespace

SourceTable PassbandTable(const ResponseRecord& record) {
  SourceTable table;
  table.kind = FileKind::responseFile;
  for (const char* const heading : {"Frequency (MHz)", "Yin", "Yout", "Weight"}) {
    table.columns.push_back(ColumnOf(heading));
  }
  AddRows(record.passband, record.nFreqPoints, table);
  return table;
}

SourceTable DelayTable(const ResponseRecord& record) {
  SourceTable table;
  table.kind = FileKind::responseFile;
  table.columns = {ColumnOf("Frequency (MHz)"), ColumnOf("Delay (ns)")};
  AddRows(record.delay, record.nDelayPoints, table);
  return table;
}

}  // namespace polefit

#include "exchange/read/response_table.h"

#include <array>

#include "exchange/read/decoding.h"
#include "responsefile/value_line.h"

namespace polefit {

namespace {

bool IsFlag(std::string_view line) {
  const std::string value = ValueOfLine(line);
  return value == "Y" || value == "N" || value == "y" || value == "n" || value.empty();
}

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

bool IsResponseFile(std::string_view text) {
  constexpr std::array<int, 5> kFlags = {slot::kEqualDelay, slot::kUseWeights,
                                         slot::kSigmaZeroWanted, slot::kDoublet, slot::kLossless};
  // The 22 answers of a file with the longest ones; nothing behind them is looked at.
  const std::vector<std::string_view> lines = LinesOf(text.substr(0, 200'000));
  if (lines.size() < 1 + static_cast<std::size_t>(slot::kMaxXY)) return false;
  bool hasAny = false;
  for (const int flag : kFlags) {
    const std::string_view line = lines[static_cast<std::size_t>(flag)];
    if (!IsFlag(line)) return false;
    hasAny = hasAny || !TrimWhite(line).empty();
  }
  return hasAny;
}

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

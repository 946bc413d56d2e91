#include "responsefile/reader.h"

#include <algorithm>
#include <string_view>

#include "base/line_source.h"
#include "base/number.h"
#include "platform/error_template.h"
#include "platform/file_checks.h"
#include "responsefile/value_line.h"

namespace polefit {

namespace {

void SkipBlockHeader(LineSource& lines) {
  lines.ReadLine();
  lines.ReadLine();
}

/// The point count of a count answer; the lists get one spare row behind it. Kept: that row takes
/// part in the 16-bit arithmetic, so 32,767 points are too many.
template <std::size_t Columns>
std::int16_t SizeLists(const std::string& answer, PointLists<Columns>& points) {
  const std::int16_t rows = ToInteger16(ReadNumber(answer) + 1);
  points.Resize(rows);
  return static_cast<std::int16_t>(rows - 1);
}

/// Stores the cells of a normalised row; what is left of it is the result. The cells before a
/// missing one are stored.
template <std::size_t Columns>
std::string_view StoreRow(std::string_view row, int rowNumber, PointLists<Columns>& points,
                          ShortRow shortRow) {
  for (int column = 1; column <= points.kColumns; ++column) {
    if (row.empty()) {
      if (shortRow == ShortRow::isKept) return {};
      throw MakeRunTimeError(error_number::kSubscriptOutOfRange);
    }
    const std::string_view cell = row.substr(0, row.find(' '));
    points.At(rowNumber, column) = cell;
    row.remove_prefix(std::min(row.size(), cell.size() + 1));
  }
  return row;
}

template <std::size_t Columns>
void ReadBlock(LineSource& lines, const std::string& countAnswer, PointLists<Columns>& points,
               std::int16_t& count, const ReadingWay& way) {
  count = SizeLists(countAnswer, points);
  SkipBlockHeader(lines);
  for (int row = 1; row <= count; ++row) {
    const std::string text = ReadValueLine(lines);
    const std::string cells = NormalizeList(text);
    const std::string_view rest = StoreRow(cells, row, points, way.shortRow);
    if (rest.empty() || way.longRows == nullptr) continue;
    const auto further = static_cast<int>(std::count(rest.begin(), rest.end(), ' ')) + 1;
    constexpr bool kIsPassband = Columns == PassbandLists::kColumns;
    way.longRows->push_back({kIsPassband ? FindingTable::passband : FindingTable::delay, row,
                             points.kColumns + further, text});
  }
}

void ReadSolverValues(LineSource& lines, ResponseRecord& record) {
  const bool wanted = ReadValueLine(lines) == "Y";  // Kept: a small "y" counts as no
  record.solverCount = wanted ? kSolverValueCount : 0;
  for (std::string& value : record.solver) value = wanted ? ReadValueLine(lines) : std::string();
}

}  // namespace

void ReadResponse(Host& host, ResponseRecord& record, std::string& name,
                  std::string& lastUsedFolder, const ReadingWay& way) {
  name = ReadValueLine(host);
  record.LastFileName = SplitPath(host, name, lastUsedFolder);
  ReadAnswers(host, record, way);
}

ResponseRecord ReadResponseFile(Host& host, const std::string& path) {
  ResponseRecord record;
  std::string name;
  std::string folder;
  try {
    host.OpenForReading(path);
    ReadResponse(host, record, name, folder);
  } catch (const RunTimeError&) {
    host.CloseFile();
    throw;
  }
  host.CloseFile();
  return record;
}

ResponseRecord ReadResponseBytes(std::string_view bytes) {
  ResponseRecord record;
  ByteLines lines(bytes);
  lines.ReadLine();
  ReadAnswers(lines, record);
  return record;
}

void ReadAnswers(LineSource& lines, ResponseRecord& record, const ReadingWay& way) {
  for (int number = slot::kEqualDelay; number <= slot::kMaxXY; ++number) {
    record.Slot(number) = ReadValueLine(lines);
  }
  record.Slot(slot::kFreqPointCount) = ReadValueLine(lines);
  ReadBlock(lines, record.Slot(slot::kFreqPointCount), record.passband, record.nFreqPoints, way);
  record.Slot(slot::kDelayPointCount) = ReadValueLine(lines);
  ReadBlock(lines, record.Slot(slot::kDelayPointCount), record.delay, record.nDelayPoints, way);
  record.Note1 = ReadValueLine(lines);
  record.Note2 = ReadValueLine(lines);
  ReadSolverValues(lines, record);
}

void ReportMissingFile(Host& host, const std::string& name) {
  host.MessageBox("Missing '" + name + "' file?", message_style::kExclamation, " File not found.");
}

std::optional<ReadStop> FileReadMe(Host& host, Files& files, ResponseRecord& record,
                                   std::string& name, const std::string& folder) {
  if (!FileExists(host, JoinPath(folder, name))) {
    if (!name.empty()) ReportMissingFile(host, name);
    return std::nullopt;
  }
  try {
    ReadResponse(host, record, name, files.lastUsedFolder);
  } catch (const RunTimeError& error) {
    ReportUnexpected(host, error, "FileReadMe");
    return ReadStop{error, host.LinesRead()};
  }
  return std::nullopt;
}

}  // namespace polefit

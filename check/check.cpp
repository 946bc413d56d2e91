#include "check/check.h"

#include "responsefile/reader.h"
#include "solver/problem/problem_reader.h"
#include "solver/problem/typing_slips.h"

namespace polefit {

namespace {

/// The first row that is too short for the form, which stops there whether it is in use or not.
template <std::size_t Columns>
void FindShortRow(FindingTable table, const PointLists<Columns>& points, int count,
                  std::vector<Finding>& findings) {
  for (int row = 1; row <= count; ++row) {
    int cells = 0;
    while (cells < points.kColumns && !points.At(row, cells + 1).empty()) ++cells;
    if (cells == points.kColumns) continue;
    const Topic topic = PointTopic(table, row, cells + 1);
    findings.push_back({topic.place, Severity::fault,
                        topic.name + ": " + std::to_string(cells) +
                            " value(s) found; the form needs " + std::to_string(points.kColumns) +
                            " and stops reading there."});
    return;
  }
}

/// Reads the file into `record`; the error that stopped it, or nothing.
std::optional<RunTimeError> Read(Host& host, const std::string& path, const ReadingWay& way,
                                 ResponseRecord& record, std::string& folder) {
  host.OpenForReading(path);
  std::optional<RunTimeError> stopped;
  std::string name;
  try {
    ReadResponse(host, record, name, folder, way);
  } catch (const RunTimeError& error) {
    stopped = error;
  }
  host.CloseFile();
  return stopped;
}

}  // namespace

std::vector<Finding> FindingsIn(const ResponseRecord& record,
                                const std::vector<LongRow>& longRows) {
  std::vector<Finding> findings;
  ReadProblem(record, findings);
  FindShortRow(FindingTable::passband, record.passband, record.nFreqPoints, findings);
  FindShortRow(FindingTable::delay, record.delay, record.nDelayPoints, findings);
  FindTypingSlips(record, longRows, findings);
  return findings;
}

CheckedFile CheckResponseFile(Host& host, const std::string& path) {
  CheckedFile checked;
  checked.path = path;
  std::vector<LongRow> longRows;
  checked.error = Read(host, path, {ShortRow::fails, &longRows}, checked.record, checked.folder);
  checked.errorLine = host.LinesRead();
  if (!checked.error) {
    checked.findings = FindingsIn(checked.record, longRows);
    return checked;
  }
  // A short row stops the form but not the judgement: the rest of the file may have more to tell.
  ResponseRecord whole;
  std::string folder;
  longRows.clear();
  const bool isWhole = !Read(host, path, {ShortRow::isKept, &longRows}, whole, folder);
  if (isWhole) checked.findings = FindingsIn(whole, longRows);
  return checked;
}

}  // namespace polefit

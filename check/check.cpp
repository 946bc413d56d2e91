#include "check/check.h"

#include <algorithm>
#include <utility>

#include "check/typing_slips.h"
#include "record/question_catalogue.h"
#include "responsefile/reader.h"
#include "solver/problem/problem_reader.h"

namespace polefit {

namespace {

/// A tick is exactly "Y" or "y"; "yes" or "1" are none, and the file does not show it.
void FindOddFlags(const ResponseRecord& record, std::vector<Finding>& findings) {
  for (const Question& question : kQuestions) {
    if (question.kind != AnswerKind::flag) continue;
    const std::string& answer = record.Slot(question.slot);
    const bool plain = answer == "Y" || answer == "y" || answer == "N" || answer == "n";
    if (plain) continue;
    const Topic topic = ShortQuestionTopic(question.slot);
    findings.push_back({topic.place, Severity::warning,
                        topic.name + ": \"" + answer + "\" counts as no; only Y or y is yes."});
  }
}

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

/// The first point whose frequency does not lie above the one before, and how many there are.
template <std::size_t Columns>
void FindDisorder(FindingTable table, const PointLists<Columns>& points, int count,
                  std::vector<Finding>& findings) {
  int disordered = 0;
  Finding finding;
  for (int row = 2; row <= count; ++row) {
    const auto frequency = ParseNumber(points.At(row, 1));
    const auto former = ParseNumber(points.At(row - 1, 1));
    if (!frequency || !former || *frequency > *former) continue;
    if (++disordered > 1) continue;
    const Topic topic = PointTopic(table, row, 1);
    finding = {topic.place, Severity::warning,
               topic.name + ": frequency " + points.At(row, 1) + " does not lie above " +
                   points.At(row - 1, 1) + " of the point before"};
  }
  if (disordered == 0) return;
  if (disordered > 1) finding.text += ", and " + std::to_string(disordered - 1) + " more such";
  finding.text += ".";
  findings.push_back(std::move(finding));
}

/// Reads the file into `record`; the error that stopped it, or nothing.
std::optional<RunTimeError> Read(Host& host, const std::string& path, ShortRow shortRow,
                                 ResponseRecord& record, std::string& folder) {
  host.OpenForReading(path);
  std::optional<RunTimeError> stopped;
  std::string name;
  try {
    ReadResponse(host, record, name, folder, shortRow);
  } catch (const RunTimeError& error) {
    stopped = error;
  }
  host.CloseFile();
  return stopped;
}

}  // namespace

std::vector<Finding> FindingsIn(const ResponseRecord& record) {
  std::vector<Finding> findings;
  ReadProblem(record, findings);
  std::stable_partition(findings.begin(), findings.end(),
                        [](const Finding& finding) { return finding.IsFault(); });
  FindOddFlags(record, findings);
  FindShortRow(FindingTable::passband, record.passband, record.nFreqPoints, findings);
  FindShortRow(FindingTable::delay, record.delay, record.nDelayPoints, findings);
  FindDisorder(FindingTable::passband, record.passband, record.nFreqPoints, findings);
  FindDisorder(FindingTable::delay, record.delay, record.nDelayPoints, findings);
  FindTypingSlips(record, findings);
  return findings;
}

CheckedFile CheckResponseFile(Host& host, const std::string& path) {
  CheckedFile checked;
  checked.path = path;
  checked.error = Read(host, path, ShortRow::fails, checked.record, checked.folder);
  checked.errorLine = host.LinesRead();
  if (!checked.error) {
    checked.findings = FindingsIn(checked.record);
    return checked;
  }
  // A short row stops the form but not the judgement: the rest of the file may have more to tell.
  ResponseRecord whole;
  std::string folder;
  if (!Read(host, path, ShortRow::isKept, whole, folder)) checked.findings = FindingsIn(whole);
  return checked;
}

}  // namespace polefit

#include "solver/data_file.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/run_time_error.h"
#include "solver/problem/answers.h"

namespace polefit {

namespace {

constexpr int kPassbandCountLine = 24;

/// What is wrong with a count line; nothing when it is a count.
std::vector<Finding> CountFault(const Topic& topic, const std::string& answer,
                                const std::string& hint) {
  const auto fault = [&topic](const std::string& rest) {
    return std::vector<Finding>{{topic.place, Severity::fault, topic.name + rest}};
  };
  const std::optional<double> count = ParseNumber(answer);
  const bool isWhole = count && *count == std::floor(*count) && *count >= 0;
  if (isWhole && *count <= kMostPoints) return {};
  if (isWhole) {
    return fault(": \"" + answer + "\" is too many; the grids hold 32766 points and a spare row" +
                 hint + ".");
  }
  return fault(": \"" + answer + "\" is not a whole number from 0 to 32766" + hint + ".");
}

/// The fault of a count that made the reader take the rest of the file for something else.
std::vector<Finding> MisledBy(const ResponseRecord& record, int linesRead) {
  if (linesRead < kPassbandCountLine) return {};
  const std::string& passband = record.Slot(slot::kFreqPointCount);
  std::vector<Finding> fault = CountFault(QuestionTopic(slot::kFreqPointCount), passband, "");
  const int delayCountLine = kPassbandCountLine + 2 + record.nFreqPoints + 1;
  if (!fault.empty() || linesRead < delayCountLine) return fault;
  const std::string points(Words(passband).front());
  return CountFault({{.table = FindingTable::delay}, "Number of delay points"},
                    record.Slot(slot::kDelayPointCount),
                    " (is the passband point count, " + points + ", right?)");
}

Failure Unreadable(const std::string& message,
                   const char* result = "NOT RUN: the data file cannot be read") {
  return {Exit::unreadable, result, {{{}, Severity::fault, message}}};
}

Failure CannotRead(const std::string& path, const RunTimeError& error) {
  const bool isMissing =
      error.number == error_number::kFileNotFound || error.number == error_number::kPathNotFound;
  return Unreadable("Cannot read the data file '" + path +
                    "': " + (isMissing ? "No such file or directory" : InWords(error)) + ".");
}

}  // namespace

Failure NoDataFile() {
  return Unreadable("Choose or save a data file, then submit it again.",
                    "NOT RUN: no data file was chosen");
}

Failure Refusal(std::vector<Finding> findings) {
  const auto faults = std::count_if(findings.begin(), findings.end(),
                                    [](const Finding& finding) { return finding.IsFault(); });
  return {Exit::faultyAnswers,
          "NOT RUN: " + std::to_string(faults) +
              (faults == 1 ? " fault in the answers" : " faults in the answers"),
          std::move(findings)};
}

std::optional<Failure> ReadDataFile(Host& host, const std::string& path, ResponseRecord& record,
                                    std::vector<LongRow>* longRows) {
  try {
    host.OpenForReading(path);
  } catch (const RunTimeError& error) {
    return CannotRead(path, error);
  }
  std::optional<RunTimeError> failure;
  try {
    std::string name;
    std::string folder;
    ReadResponse(host, record, name, folder, {ShortRow::isKept, longRows});
    record.LastFileName = name;
  } catch (const RunTimeError& error) {
    failure = error;
  }
  const int lines = host.LinesRead();
  host.CloseFile();
  std::vector<Finding> misled = MisledBy(record, lines);
  if (!misled.empty()) return Refusal(std::move(misled));
  if (!failure) return std::nullopt;
  if (failure->number != error_number::kInputPastEndOfFile) return CannotRead(path, *failure);
  return Unreadable("The data file ends at line " + std::to_string(lines) +
                    ", before answer line " + std::to_string(lines + 1) + ".");
}

}  // namespace polefit

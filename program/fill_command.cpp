#include "program/fill_command.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "exchange/fill_column.h"
#include "platform/paths.h"
#include "program/console_exit.h"
#include "program/console_files.h"
#include "responsefile/reader.h"
#include "responsefile/writer.h"
#include "solver/problem/answers.h"

namespace polefit {

namespace {

struct FillWords {
  std::vector<Fill> fills;
  std::optional<FrequencyGrid> grid;
  /// File, output.
  std::vector<std::string> names;
};

/// "A:B:N" or "A:B:N:log".
std::optional<FrequencyGrid> ReadGrid(const std::string& word) {
  std::vector<std::string> parts(1);
  for (const char c : word) {
    if (c == ':') {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  const bool isLogarithmic = parts.size() == 4 && parts[3] == "log";
  if (parts.size() != 3 && !isLogarithmic) return std::nullopt;
  const auto from = ParseNumber(parts[0]);
  const auto to = ParseNumber(parts[1]);
  const auto steps = ParseNumber(parts[2]);
  if (!from || !to || !steps || *steps < 1 || *steps > 1e6) return std::nullopt;
  const FrequencyGrid grid = {*from, *to, static_cast<int>(*steps), isLogarithmic};
  if (grid.steps != *steps || !grid.Fault().empty()) return std::nullopt;
  return grid;
}

std::optional<Fill> ReadFill(const std::string& word) {
  const std::size_t sign = word.find('=');
  if (sign == std::string::npos) return std::nullopt;
  const auto column = FillColumnOf(word.substr(0, sign));
  if (!column) return std::nullopt;
  return Fill{*column, word.substr(sign + 1), {}};
}

/// The first word belongs to the --fill before it. Options may stand anywhere; behind "--" none
/// does.
std::optional<FillWords> ReadFillWords(std::span<const std::string> words) {
  FillWords read;
  std::string option = "--fill";
  for (const std::string& word : words) {
    if (option == "--fill") {
      const auto fill = ReadFill(word);
      if (!fill) return std::nullopt;
      read.fills.push_back(*fill);
    } else if (option == "--grid") {
      read.grid = ReadGrid(word);
      if (!read.grid) return std::nullopt;
    } else if (option == "--" || word == "-" || !word.starts_with('-')) {
      read.names.push_back(word);
      continue;
    } else if (word != "--fill" && word != "--grid" && word != "--") {
      return std::nullopt;
    } else {
      option = word;
      continue;
    }
    option.clear();
  }
  const bool isComplete = option.empty() || option == "--";
  if (!isComplete || read.names.size() != 2) return std::nullopt;
  return read;
}

/// Each table gets the new frequencies with its first column.
int FillAll(const FillWords& words, ResponseRecord& record) {
  bool hasGrid[] = {false, false};
  for (Fill fill : words.fills) {
    bool& isSet = hasGrid[IsOfDelayTable(fill.column) ? 1 : 0];
    if (!isSet) fill.grid = words.grid;
    isSet = true;
    const FilledColumn filled = CalculateFill(record, fill);
    if (!filled.fault.empty()) {
      return Fail(filled.place > 0 ? kWrongUsage : 1, "'" + fill.expression + "': " + filled.fault);
    }
    PutFill(record, fill, filled);
  }
  return 0;
}

/// A file cannot hold a row with an empty cell.
int CheckRows(const ResponseRecord& record) {
  const std::string advice = ": fill its other columns too; --fill can be given several times";
  if (LastTypedRow(record, false) > record.nFreqPoints) {
    return Fail(kNothingUsable, "passband point " + std::to_string(record.nFreqPoints + 1) +
                                    " has an empty cell" + advice);
  }
  if (LastTypedRow(record, true) > record.nDelayPoints) {
    return Fail(kNothingUsable, "delay point " + std::to_string(record.nDelayPoints + 1) +
                                    " has an empty cell" + advice);
  }
  return 0;
}

}  // namespace

int FillCommand(Host& host, std::span<const std::string> words) {
  const std::optional<FillWords> read = ReadFillWords(words);
  if (!read) return WrongUsage();
  const std::string& path = read->names[0];
  const std::string& out = read->names[1];
  ResponseRecord record;
  try {
    record = ReadResponseFile(host, path);
  } catch (const RunTimeError& error) {
    return FailReading(path, error);
  }
  int ending = FillAll(*read, record);
  if (ending == 0) ending = CheckRows(record);
  if (ending != 0) return ending;
  const std::string name = CutPath(out == "-" ? path : out).name;
  return WriteOutput(host, out, ResponseFileBytes(host, record, name));
}

}  // namespace polefit

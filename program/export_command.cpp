#include "program/export_command.h"

#include <optional>
#include <vector>

#include "exchange/export.h"
#include "platform/paths.h"
#include "program/console_exit.h"
#include "program/console_files.h"
#include "responsefile/reader.h"

namespace polefit {

namespace {

struct ExportWords {
  /// Format, file, output.
  std::vector<std::string> names;
  bool atDataPoints = false;
};

/// Options may stand anywhere; behind "--" none does.
std::optional<ExportWords> ReadExportWords(std::span<const std::string> words) {
  ExportWords read;
  bool areNames = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (areNames || word == "-" || !word.starts_with('-')) {
      read.names.push_back(word);
    } else if (word == "--") {
      areNames = true;
    } else if (word == "--points" && i + 1 < words.size() && words[i + 1] == "data") {
      read.atDataPoints = true;
      ++i;
    } else {
      return std::nullopt;
    }
  }
  if (read.names.size() != 3) return std::nullopt;
  return read;
}

int UnknownFormat(const std::string& word) {
  std::string formats;
  for (const ExportFormatName& format : kExportFormats) formats += " " + std::string(format.word);
  return Fail(kWrongUsage, "there is no format '" + word + "'; the formats are" + formats);
}

}  // namespace

int ExportCommand(Host& host, std::span<const std::string> words) {
  const std::optional<ExportWords> read = ReadExportWords(words);
  if (!read) return WrongUsage();
  const std::string& path = read->names[1];
  const std::optional<ExportFormat> format = ExportFormatOf(read->names[0]);
  if (!format) return UnknownFormat(read->names[0]);
  if (read->atDataPoints && *format != ExportFormat::touchstone) {
    return Fail(kWrongUsage, "--points data goes with touchstone only");
  }
  try {
    const ResponseRecord record = ReadResponseFile(host, path);
    const Export exported = ExportResult(record, {*format, read->atDataPoints, CutPath(path).name,
                                                  host.FormatNow("%Y-%m-%d %H:%M")});
    for (const std::string& fault : exported.faults)
      Fail(kNothingUsable, "'" + path + "': " + fault);
    if (!exported.faults.empty()) return kNothingUsable;
    return WriteOutput(host, read->names[2], exported.text);
  } catch (const RunTimeError& error) {
    return FailReading(path, error);
  }
}

}  // namespace polefit

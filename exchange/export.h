#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/filter_result.h"
#include "record/response_record.h"

namespace polefit {

/// The files that other programs take. csv has the poles and zeros, csvCurves the fit at the
/// points.
enum class ExportFormat {
  scipy,
  matlab,
  spice,
  spiceLaplace,
  spiceRlc,
  csv,
  csvCurves,
  touchstone,
  json
};

/// A format as the command line and the dialog name it.
struct ExportFormatName {
  ExportFormat format;
  std::string_view word;
  std::string_view description;
  /// What a file of this kind is called behind its name.
  std::string_view suffix;
};

extern const std::array<ExportFormatName, 9> kExportFormats;

/// The format that a word on the command line names, or nothing.
std::optional<ExportFormat> ExportFormatOf(std::string_view word);

/// What is exported, and what its head says of it.
struct ExportRequest {
  ExportFormat format = ExportFormat::scipy;
  /// touchstone: at the frequencies of the passband points, not from 0 to three times Freq Norm.
  bool atDataPoints = false;
  /// The name of the file that the record comes from, and when it is exported.
  std::string file;
  std::string date;
};

/// The text of an exported result (UTF-8), or why there is none.
struct Export {
  std::string text;
  std::vector<std::string> faults;
};

/// Exports the poles, zeros and gain that the answers of a record hold.
Export ExportResult(const ResponseRecord& record, const ExportRequest& request);

/// The lines that stand at the head of every export, each begun with `prefix`: what it is, Freq
/// Norm, file, date, rms.
std::string ExportHead(const FilterResult& result, std::string_view prefix);

}  // namespace polefit

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host.h"
#include "platform/paths.h"
#include "record/finding.h"
#include "record/response_record.h"

namespace polefit {

/// What a grid row with too few cells does: the form stops there with error 9, the solver reads on
/// and judges the row by its empty cells.
enum class ShortRow { fails, isKept };

/// A row with more cells than its table has columns, of which the further ones are left out.
struct LongRow {
  FindingTable table = FindingTable::passband;
  int row = 1;
  int cells = 0;
  std::string text;
};

/// How a file is read.
struct ReadingWay {
  ShortRow shortRow = ShortRow::fails;
  /// Where the long rows go; nowhere without it.
  std::vector<LongRow>* longRows = nullptr;
};

/// Reads a Response Input File from the shared file, which is open for reading, into `record`.
/// `name` becomes the value of line 1, `lastUsedFolder` its folder part or the current folder.
/// Throws RunTimeError where the text ends or cannot be taken; what was read before stays.
void ReadResponse(Host& host, ResponseRecord& record, std::string& name,
                  std::string& lastUsedFolder, const ReadingWay& way = {});

/// The Response Input File at `path`: opened, read as above, and closed, after an error too.
ResponseRecord ReadResponseFile(Host& host, const std::string& path);

/// The Response Input File of these bytes, but for line 1. Errors as for ReadResponse.
ResponseRecord ReadResponseBytes(std::string_view bytes);

/// Reads what follows line 1 into `record`. Errors as for ReadResponse.
void ReadAnswers(LineSource& lines, ResponseRecord& record, const ReadingWay& way = {});

/// Says that a file is missing.
void ReportMissingFile(Host& host, const std::string& name);

/// Why and behind how many lines a reading stopped.
struct ReadStop {
  RunTimeError error;
  int linesRead = 0;
};

/// Reads the opened file `folder`/`name` into `record`. A missing file and a read error are
/// reported in a message and the program goes on with what was read. On return `name` holds what
/// line 1 gave. The result is where a read error stopped it.
std::optional<ReadStop> FileReadMe(Host& host, Files& files, ResponseRecord& record,
                                   std::string& name, const std::string& folder);

}  // namespace polefit

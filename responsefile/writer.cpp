#include "responsefile/writer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>

#include "base/number.h"
#include "base/text.h"
#include "platform/paths.h"
#include "record/question_catalogue.h"

namespace polefit {

namespace {

constexpr std::size_t kLabelLength = 50;
constexpr std::size_t kDroppedCaptionEnd = 15;

/// "22, 5, and 9          March 03, 2004 @ 9:05 AM": the counts and the time of writing. Kept:
/// it is cut like every label, so a long month name or large counts lose the end of the time.
std::string HeaderText(Host& host, const ResponseRecord& record) {
  return "22, " + std::to_string(record.nFreqPoints) + ", and " +
         std::to_string(record.solverCount) + "          " +
         host.FormatNow("%B %d, %Y @ %-I:%M %p");
}

/// What a solver question leaves for its comment. Kept: the cut falls inside words.
std::string_view SolverComment(std::string_view caption) {
  const std::size_t length = CharacterCount(caption);
  if (length < kDroppedCaptionEnd) throw MakeRunTimeError(error_number::kOverflow);
  return TrimBlanks(FirstCharacters(caption, length - kDroppedCaptionEnd));
}

char* Put(char* at, std::string_view text) {
  return std::copy(text.begin(), text.end(), at);
}

/// One grid row: the cells with two blanks between them, then the row's number. The text is built
/// in place, because the largest file has 65,532 of them. Kept: an empty cell leaves only blanks,
/// which a reader passes over, so that the cells behind it move to the left.
template <std::size_t Columns>
std::string_view RowText(const PointLists<Columns>& points, int row, std::string& buffer) {
  constexpr std::string_view kGap = "  ";
  constexpr std::string_view kComment = "\t\t ! Point #  ";
  constexpr std::size_t kLongestNumber = 12;
  std::array<std::string_view, Columns> cells;
  std::size_t length = kComment.size() + kLongestNumber;
  for (std::size_t i = 0; i < Columns; ++i) {
    cells[i] = points.At(row, static_cast<int>(i) + 1);
    length += kGap.size() + cells[i].size();
  }
  if (buffer.size() < length) buffer.resize(length);
  char* at = Put(buffer.data(), cells[0]);
  for (std::size_t i = 1; i < Columns; ++i) at = Put(Put(at, kGap), cells[i]);
  at = Put(at, kComment);
  at = std::to_chars(at, at + kLongestNumber, row).ptr;
  *at++ = ' ';
  return {buffer.data(), at};
}

/// Where the lines go, one after the other.
using LineSink = std::function<void(std::string_view)>;

/// One answer line: the value ("-999" when empty), two tabs, "! " and the first 50 characters of
/// the label.
void WriteAnswerLine(const LineSink& sink, std::string_view value, std::string_view label) {
  std::string line(value.empty() ? "-999" : value);
  line += "\t\t! ";
  line += FirstCharacters(label, kLabelLength);
  sink(line);
}

template <std::size_t Columns>
void WriteRows(const LineSink& sink, const PointLists<Columns>& points, int count) {
  std::string buffer;
  for (int row = 1; row <= count; ++row) sink(RowText(points, row, buffer));
}

void WriteAnswers(const LineSink& sink, const ResponseRecord& record) {
  for (const Question& question : kQuestions) {
    WriteAnswerLine(sink, record.Slot(question.slot), question.label);
  }
}

void WritePoints(const LineSink& sink, const ResponseRecord& record) {
  WriteAnswerLine(sink, record.Slot(slot::kFreqPointCount), kPointCountQuestion);
  sink("Freq       Yin          Yout           Weight");
  sink("===========================================");
  WriteRows(sink, record.passband, record.nFreqPoints);
  WriteAnswerLine(sink, record.Slot(slot::kDelayPointCount), "");
  sink("       DelFreq          TX");
  sink("  ==============================");
  WriteRows(sink, record.delay, record.nDelayPoints);
}

void WriteSolverValues(const LineSink& sink, const ResponseRecord& record) {
  const bool wanted = record.solverCount > 0;
  WriteAnswerLine(sink, wanted ? "Y" : "N", "22. » Want to change solver variables?");
  if (!wanted) return;
  for (std::size_t i = 0; i < record.solver.size(); ++i) {
    WriteAnswerLine(sink, record.solver[i], SolverComment(kSolverQuestions[i].label));
  }
}

void WriteLines(Host& host, const LineSink& sink, const ResponseRecord& record,
                const std::string& name) {
  WriteAnswerLine(sink, name, HeaderText(host, record));
  WriteAnswers(sink, record);
  WritePoints(sink, record);
  WriteAnswerLine(sink, record.Note1, "20. » Note1");
  WriteAnswerLine(sink, record.Note2, "    » Note2");
  WriteSolverValues(sink, record);
}

bool HasSolverValues(const ResponseRecord& record) {
  // Kept: only the first three values decide; the other six are dropped with them.
  return !(record.solver[0] + record.solver[1] + record.solver[2]).empty();
}

}  // namespace

void DeriveCounts(ResponseRecord& record) {
  record.solverCount = HasSolverValues(record) ? kSolverValueCount : 0;
  record.Slot(slot::kFreqPointCount) = SignedText(record.nFreqPoints);
  record.Slot(slot::kDelayPointCount) = SignedText(record.nDelayPoints);
}

int WriteResponseFile(Host& host, ResponseRecord& record, const ResponseTarget& target) {
  DeriveCounts(record);
  const bool isLastRun = !target.name.empty() && target.name == target.lastRunPath;
  host.OpenForWriting(isLastRun ? target.name : JoinPath(target.folder, target.name));
  try {
    const auto toFile = [&host](std::string_view line) { host.WriteLine(line); };
    WriteLines(host, toFile, record, isLastRun ? record.LastFileName : target.name);
    return host.CloseFile();
  } catch (...) {
    host.AbandonFile();
    throw;
  }
}

std::string ResponseFileBytes(Host& host, ResponseRecord& record, const std::string& name) {
  DeriveCounts(record);
  std::string text;
  WriteLines(
      host, [&text](std::string_view line) { text.append(line).append("\r\n"); }, record, name);
  std::string bytes;
  int replaced = 0;
  return std::string(ToWindows1252(text, bytes, replaced));
}

}  // namespace polefit

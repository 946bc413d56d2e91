#include "responsefile/file_look.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "base/line_source.h"
#include "base/text.h"
#include "record/question_catalogue.h"
#include "responsefile/reader.h"
#include "responsefile/value_line.h"

namespace polefit {

namespace {

/// A value line as it stands: "-999" is not blanked as it is where the value is taken.
std::string WrittenValue(std::string_view line) {
  std::string text(TrimBlanks(line.substr(0, line.find('!'))));
  std::erase(text, '\t');
  return text;
}

bool IsYesOrNo(const std::string& value) {
  return value == "Y" || value == "y" || value == "N" || value == "n" || value.starts_with("-999");
}

/// The lines of the answers by yes or no; none where the text ends before the last answer.
std::vector<std::string> FlagLines(std::string_view bytes) {
  std::vector<std::string> flags;
  ByteLines lines(bytes);
  try {
    lines.ReadLine();  // the name of the file
    for (const Question& question : kQuestions) {
      const std::string_view line = lines.ReadLine();
      if (question.kind == AnswerKind::flag) flags.emplace_back(line);
    }
  } catch (const RunTimeError&) {
    flags.clear();
  }
  return flags;
}

bool AreFlags(const std::vector<std::string>& lines) {
  const bool isAnyWritten = std::ranges::any_of(lines, [](const std::string& line) {
    return line.find_first_not_of(" \t") != std::string::npos;
  });
  return isAnyWritten && std::ranges::all_of(lines, [](const std::string& line) {
           const std::string value = WrittenValue(line);
           return value.empty() || IsYesOrNo(value);
         });
}

/// A whole text that is a number which the tables can hold.
bool IsCount(const std::string& answer) {
  const std::string_view text = TrimBlanks(answer);
  double count = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
  return error == std::errc() && end == text.data() + text.size() && count >= 0 &&
         count <= kMostPoints;
}

/// As the form splits them: at every single blank. No answer at all is shown as three zeros.
bool IsThreePieces(const std::string& zeroCounts) {
  return zeroCounts.empty() || std::ranges::count(zeroCounts, ' ') >= 2;
}

bool Fits(const ResponseRecord& record, const std::vector<std::string>& flags) {
  return IsCount(record.Slot(slot::kFreqPointCount)) &&
         IsCount(record.Slot(slot::kDelayPointCount)) &&
         IsThreePieces(record.Slot(slot::kZeroCounts)) &&
         std::ranges::all_of(flags, IsYesOrNo, WrittenValue);
}

}  // namespace

FileLook LookAt(std::string_view bytes) {
  FileLook look;
  const std::vector<std::string> flags = FlagLines(bytes);
  look.hasFlags = AreFlags(flags);
  ResponseRecord record;
  try {
    ByteLines lines(bytes);
    look.firstLine = lines.ReadLine();
    ReadAnswers(lines, record);
  } catch (const RunTimeError&) {
    return look;  // where it ends, or cannot be taken
  }
  look.readsToItsEnd = true;
  look.points = record.nFreqPoints + record.nDelayPoints;
  look.isResponseFile = Fits(record, flags);
  return look;
}

}  // namespace polefit

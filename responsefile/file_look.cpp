#include "responsefile/file_look.h"

#include <algorithm>
#include <charconv>

#include "base/line_source.h"
#include "base/text.h"
#include "responsefile/reader.h"
#include "responsefile/value_line.h"

namespace polefit {

namespace {

constexpr int kYesNoSlots[] = {slot::kEqualDelay, slot::kUseWeights, slot::kSigmaZeroWanted,
                               slot::kDoublet, slot::kLossless};

/// A value line as it stands: "-999" is not blanked as it is where the value is taken.
std::string WrittenValue(std::string_view line) {
  std::string text(TrimBlanks(line.substr(0, line.find('!'))));
  std::erase(text, '\t');
  return text;
}

bool IsYesOrNo(const std::string& value) {
  return value == "Y" || value == "y" || value == "N" || value == "n" || value.starts_with("-999");
}

/// Every yes or no question is answered so. The answer of slot k stands in line k + 1.
bool AnswersYesOrNo(std::string_view bytes) {
  ByteLines lines(bytes);
  for (int number = 0; number <= slot::kLossless; ++number) {
    const std::string value = WrittenValue(lines.ReadLine());
    const bool asked = std::ranges::find(kYesNoSlots, number) != std::end(kYesNoSlots);
    if (asked && !IsYesOrNo(value)) return false;
  }
  return true;
}

/// A whole text that is a number which the tables can hold.
bool IsCount(const std::string& answer) {
  constexpr double kMostPoints = 32766;  // rows are counted in 16 bits, with a spare one
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

bool Fits(std::string_view bytes, const ResponseRecord& record) {
  return IsCount(record.Slot(slot::kFreqPointCount)) &&
         IsCount(record.Slot(slot::kDelayPointCount)) &&
         IsThreePieces(record.Slot(slot::kZeroCounts)) && AnswersYesOrNo(bytes);
}

}  // namespace

FileLook LookAt(std::string_view bytes) {
  FileLook look;
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
  look.isResponseFile = Fits(bytes, record);
  return look;
}

}  // namespace polefit

#include "runs/kept_run.h"

#include <array>
#include <sstream>

#include "base/text.h"
#include "runs/record_line.h"

namespace polefit {

namespace {

constexpr const char* kRunMark = "polefit-run-1";
constexpr std::size_t kLongestText = 2000;

/// The first line: the numbers, and how long each content behind the head is.
struct FirstLine {
  std::int64_t started = 0;
  std::int64_t ended = 0;
  int outcome = 0;
  int isPinned = 0;
  std::array<std::uint64_t, 3> sizes = {};
};

/// The head's lines behind the first one.
enum TextLine { kFile, kFolder, kVerdict, kEnding, kNote, kFigures, kTextLines };

struct Head {
  FirstLine first;
  std::array<std::string, kTextLines> texts;
  /// Where the contents begin.
  std::size_t size = 0;
};

std::optional<FirstLine> ReadFirstLine(std::string_view line) {
  std::istringstream words{std::string(line)};
  std::string mark;
  FirstLine first;
  words >> mark >> first.started >> first.ended >> first.outcome >> first.isPinned;
  for (std::uint64_t& size : first.sizes) words >> size;
  const bool isOutcome = first.outcome >= 0 && first.outcome <= static_cast<int>(Outcome::failed);
  return words && mark == kRunMark && isOutcome ? std::optional(first) : std::nullopt;
}

std::optional<Head> ReadHead(std::string_view bytes) {
  Head head;
  for (int line = -1; line < kTextLines; ++line) {
    const std::size_t end = bytes.find('\n', head.size);
    if (end == std::string_view::npos) return std::nullopt;
    const std::string_view text = bytes.substr(head.size, end - head.size);
    head.size = end + 1;
    if (line >= 0) {
      head.texts.at(static_cast<std::size_t>(line)) = UnescapedLine(text);
    } else if (const auto first = ReadFirstLine(text)) {
      head.first = *first;
    } else {
      return std::nullopt;
    }
  }
  return head;
}

/// Whether the contents together are what is left of the file. Sums of what a torn file tells could
/// wrap around.
bool IsFilledBy(const std::array<std::uint64_t, 3>& sizes, std::uint64_t left) {
  for (const std::uint64_t size : sizes) {
    if (size > left) return false;
    left -= size;
  }
  return left == 0;
}

std::string LineOf(const std::string& text) {
  return EscapedLine(std::string(FirstCharacters(text, kLongestText))) + '\n';
}

}  // namespace

std::string BytesOf(const KeptRun& run, const RunContents& contents) {
  std::ostringstream bytes;
  bytes << kRunMark << ' ' << run.started << ' ' << run.ended << ' '
        << static_cast<int>(run.verdict.outcome) << ' ' << static_cast<int>(run.isPinned) << ' '
        << contents.input.size() << ' ' << contents.report.size() << ' ' << contents.values.size()
        << '\n';
  for (const std::string& text : {run.file, run.folder, run.verdict.text, run.verdict.ending,
                                  run.note, MachineLineOf(run.figures)}) {
    bytes << LineOf(text);
  }
  bytes << contents.input << contents.report << contents.values;
  return bytes.str();
}

std::optional<KeptRun> ReadKeptRun(const std::string& id, std::string_view head,
                                   std::uint64_t size) {
  const std::optional<Head> read = ReadHead(head);
  if (!read) return std::nullopt;
  if (!IsFilledBy(read->first.sizes, size - read->size)) return std::nullopt;
  const auto& [input, report, values] = read->first.sizes;
  const auto& texts = read->texts;
  return KeptRun{
      .id = id,
      .started = read->first.started,
      .ended = read->first.ended,
      .file = texts[kFile],
      .folder = texts[kFolder],
      .verdict = {static_cast<Outcome>(read->first.outcome), texts[kVerdict], texts[kEnding]},
      .figures = ReadMachineLine(texts[kFigures]).value_or(MachineLine{}),
      .note = texts[kNote],
      .isPinned = read->first.isPinned != 0,
      .hasReport = report > 0,
      .hasValues = values > 0};
}

std::optional<RunContents> ReadRunContents(std::string_view bytes) {
  const std::optional<Head> head = ReadHead(bytes);
  if (!head || !ReadKeptRun({}, bytes, bytes.size())) return std::nullopt;
  const auto& [input, report, values] = head->first.sizes;
  RunContents contents;
  contents.input = bytes.substr(head->size, input);
  contents.report = bytes.substr(head->size + input, report);
  contents.values = bytes.substr(head->size + input + report, values);
  return contents;
}

}  // namespace polefit

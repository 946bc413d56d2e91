#include "app/part_read.h"

#include <algorithm>
#include <utility>

#include "app/file_commands.h"
#include "app/form_replacement.h"
#include "app/former_versions.h"
#include "platform/paths.h"

namespace polefit {

namespace {

constexpr int kPassbandCountLine = 24;
constexpr int kHeaderLines = 2;

std::string UpTo(const std::string& table, int row) {
  return "was read in part, up to " + table + "row " + std::to_string(std::max(row, 0));
}

bool ReadsToItsEnd(Host& host, const std::string& path) {
  return LookAt(host.ReadFile(path)).readsToItsEnd;
}

/// Shows again what the form held, as the current file that it was.
void ShowBefore(Program& program, const FormCells& before) {
  ShowCells(program, before);
  EnterCurrentFolder(program);
}

void PutAsideBack(Program& program, const std::string& path, const std::string& aside) {
  const bool isOpen = path == program.host.ResolvedPath(program.files.CurrentPath());
  if (isOpen && AskBeforeReplacing(program) == kStop) return;
  KeepFile(program, path, VersionKind::foreign);
  program.host.MoveFile(aside, path);
  if (isOpen) OpenFile(program, path);
}

void OpenAside(Program& program, const std::string& aside) {
  if (AskBeforeReplacing(program) == kGoOn) OpenFile(program, aside);
}

void OfferAside(Program& program, const std::string& path, const std::string& aside,
                bool isMissing) {
  const std::string name = CutPath(path).name;
  program.notices.Post(
      {"aside " + path,
       Urgency::dataAtRisk,
       "'" + name + (isMissing ? "' is missing" : "' is incomplete") +
           " after a save that did not end; its former content stands in '" + CutPath(aside).name +
           "'.",
       {{"Open " + CutPath(aside).name, [&program, aside] { OpenAside(program, aside); }},
        {"Put It Back", [&program, path, aside] { PutAsideBack(program, path, aside); }}}});
}

/// How far a file was read into `record`: "ends before answer line 19", "was read in part, up to
/// row 3".
std::string HowFarRead(const ResponseRecord& record, const ReadStop& stop) {
  const bool ends = stop.error.number == error_number::kInputPastEndOfFile;
  // A line that cannot be taken, like a row that is too short, has been read all the same.
  const int taken = ends ? stop.linesRead : stop.linesRead - 1;
  if (taken < kPassbandCountLine) {
    return ends ? "ends before answer line " + std::to_string(taken + 1)
                : "was read in part, up to line " + std::to_string(taken);
  }
  const int row = taken - kPassbandCountLine - kHeaderLines;
  if (row < record.nFreqPoints) return UpTo("", row);
  const int delayRow = row - record.nFreqPoints - 1 - kHeaderLines;
  if (row > record.nFreqPoints && delayRow < record.nDelayPoints) return UpTo("delay ", delayRow);
  return "was read in part, up to line " + std::to_string(taken);
}

/// Where the former content of a file stands that a save has not ended: the name with "~", or with
/// one more for each that was taken. Nothing when there is none.
std::optional<std::string> FormerContentOf(Host& host, const std::string& path) {
  std::string aside = path;
  while (host.StateOfFile(aside + "~")) aside += '~';
  return aside == path ? std::nullopt : std::optional(aside);
}

}  // namespace

void TellPartRead(Program& program, const ReadStop& stop, FormCells before) {
  const auto back = [&program, before = std::move(before)] {
    if (AskBeforeReplacing(program) == kGoOn) ShowBefore(program, before);
  };
  program.notices.Post(
      {"part read",
       Urgency::dataAtRisk,
       program.files.currentFileName + " " + HowFarRead(program.document.record, stop) + ".",
       {{"Back to What Was There", back}}});
}

void TellLastRunPartRead(Program& program, const ReadStop& stop) {
  const std::string path = program.folders.LastRunPath;
  const auto remove = [&program, path] {
    KeepFile(program, path, VersionKind::foreign);
    program.host.DeleteFile(path);
  };
  program.notices.Post({"part read",
                        Urgency::asks,
                        CutPath(path).name + " " + HowFarRead(program.document.record, stop) + ".",
                        {{"Delete It", remove}}});
}

std::optional<std::string> FormerContentOfTorn(Host& host, const std::string& path) {
  const auto aside = FormerContentOf(host, path);
  const bool isTorn = aside && !(host.StateOfFile(path) && ReadsToItsEnd(host, path));
  return isTorn ? aside : std::nullopt;
}

void LookForFormerContent(Program& program, const std::string& path) {
  Host& host = program.host;
  try {
    const auto aside = FormerContentOfTorn(host, path);
    if (!aside || !ReadsToItsEnd(host, *aside)) return;
    OfferAside(program, path, *aside, !host.StateOfFile(path).has_value());
  } catch (const RunTimeError&) {
    return;  // what cannot be read has nothing to offer
  }
}

void LookForFormerContents(Program& program, const std::string& folder) {
  try {
    for (const std::string& name : program.host.FilesIn(folder)) {
      const std::size_t end = name.find_last_not_of('~') + 1;
      if (end < name.size()) LookForFormerContent(program, JoinPath(folder, name.substr(0, end)));
    }
  } catch (const RunTimeError&) {
    return;
  }
}

}  // namespace polefit

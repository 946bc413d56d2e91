#include "app/former_versions.h"

#include "app/file_commands.h"
#include "app/form_replacement.h"
#include "app/part_read.h"
#include "app/recent_files.h"
#include "app/recovery.h"

namespace polefit {

namespace {

constexpr std::int64_t kSecond = 1'000'000'000;  // in the nanoseconds of FileState

std::string CurrentPath(Program& program) {
  return program.host.ResolvedPath(program.files.CurrentPath());
}

void TellNotKept(Program& program, const std::string& path, const RunTimeError& error) {
  program.notices.Post({"kept " + path, Urgency::dataAtRisk,
                        "The former content of '" + CutPath(path).name +
                            "' could not be kept under Former Versions: " + InWords(error) + "."});
}

/// Where the content stands that a save replaces: for the torn file of a save that failed, beside
/// it, and kept perhaps only now.
std::string PathOfContent(Program& program, const std::string& path) {
  if (program.document.tornPath != path) return path;
  return FormerContentOfTorn(program.host, path).value_or(path);
}

/// A torn file with nothing beside it was a new one.
bool IsOwnTornFile(const Program& program, const FormerFile& former) {
  return program.document.tornPath == former.path && !former.look.readsToItsEnd;
}

FormerFile Keep(Program& program, const std::string& path, const FileState& state) {
  const std::string bytes = program.host.ReadFile(PathOfContent(program, path));
  const KnownFile& known = program.document.known;
  FormerFile former{path, LookAt(bytes), ContentDigest(bytes)};
  former.isLink = state.isLink;
  former.isChangedByOthers = known.path == path && known.digest != former.digest;
  if (IsOwnTornFile(program, former)) return former;
  const bool isOwn = former.look.isResponseFile && !former.isChangedByOthers;
  former.version = VersionStore(program.host)
                       .Keep(path, bytes, state.modified / kSecond,
                             isOwn ? VersionKind::saved : VersionKind::foreign);
  return former;
}

bool HasLostItsPoints(const Program& program, const FormerFile& former) {
  const ResponseRecord& record = program.document.record;
  return former.look.points > 0 && record.nFreqPoints + record.nDelayPoints == 0;
}

std::string SentenceOn(const Program& program, const FormerFile& former) {
  const std::string name = "'" + CutPath(former.path).name + "'";
  if (!former.look.readsToItsEnd || !former.look.isResponseFile) {
    return name + " was no whole Response Input File before it was saved over.";
  }
  if (former.isChangedByOthers) {
    return name + " had been changed by another program before it was saved over.";
  }
  if (HasLostItsPoints(program, former)) {
    return name + " held " + std::to_string(former.look.points) +
           (former.look.points == 1 ? " point" : " points") + " before it was saved without any.";
  }
  return {};
}

/// The file says the same after the save as before.
void DropVersion(Program& program, const Version& version) {
  try {
    VersionStore(program.host).Remove(version);
  } catch (const RunTimeError&) {
    return;  // then it stays one more
  }
}

}  // namespace

std::optional<FormerFile> KeepFormerFile(Program& program) {
  std::string path = program.files.currentFileName;
  try {
    path = CurrentPath(program);
    const auto state = program.host.StateOfFile(path);
    if (!state) return std::nullopt;
    FormerFile former = Keep(program, path, *state);
    program.notices.Remove("kept " + path);
    return former;
  } catch (const RunTimeError& error) {
    TellNotKept(program, path, error);
    return std::nullopt;
  }
}

void TellOfFormerFile(Program& program, const FormerFile& former) {
  if (former.isLink) {
    program.notices.Post({"link " + former.path, Urgency::worthKnowing,
                          "'" + CutPath(former.path).name +
                              "' was a link. Now it is a file of its own, and the file that it led "
                              "to is as it was."});
  }
  if (!former.version) return;
  if (former.digest == program.document.known.digest) {
    DropVersion(program, *former.version);
    return;
  }
  const std::string sentence = SentenceOn(program, former);
  if (sentence.empty()) return;
  const auto putBack = [&program, path = former.path, version = *former.version] {
    PutVersionBack(program, path, version);
  };
  program.notices.Post(
      {"saved " + former.path, Urgency::dataAtRisk, sentence, {{"Put It Back", putBack}}});
}

void KeepFile(Program& program, const std::string& path, VersionKind kind) {
  try {
    const auto state = program.host.StateOfFile(path);
    if (!state) return;
    VersionStore(program.host)
        .Keep(program.host.ResolvedPath(path), program.host.ReadFile(path),
              state->modified / kSecond, kind);
  } catch (const RunTimeError& error) {
    TellNotKept(program, path, error);
  }
}

void RememberFile(Program& program) {
  program.document.known = {};
  try {
    const std::string path = CurrentPath(program);
    program.document.known = {path, ContentDigest(program.host.ReadFile(path))};
    NoteRecentFile(program.host, path);
  } catch (const RunTimeError&) {
    program.document.known = {};  // then nothing can be said of changes by others
  }
}

void PutVersionBack(Program& program, const std::string& path, const Version& version) {
  PutContentBack(program, path, VersionStore(program.host).BytesOf(version));
}

void PutContentBack(Program& program, const std::string& path, const std::string& bytes) {
  const bool isOpen = CurrentPath(program) == program.host.ResolvedPath(path);
  const bool isShown = isOpen && LookAt(bytes).isResponseFile;
  if (isShown && AskBeforeReplacing(program) == kStop) return;
  KeepFile(program, path, VersionKind::saved);
  program.host.ReplaceFile(path, bytes);
  if (isShown) {
    OpenFile(program, path);
  } else if (isOpen) {
    program.files.currentFileName = kNewData;
    program.windows.frmMain.SetText(kLastFileNameBox, program.files.currentFileName);
  }
}

void OpenVersionAsNew(Program& program, const Version& version) {
  const std::string bytes = VersionStore(program.host).BytesOf(version);
  if (version.kind == VersionKind::unsaved) {
    if (const auto copy = ReadRecovery(bytes)) RestoreCopy(program, *copy);
  } else if (AskBeforeReplacing(program) == kGoOn) {
    ShowAsNew(program, bytes);
  }
}

}  // namespace polefit

#pragma once

#include <optional>
#include <string>

#include "app/version_store.h"
#include "form/state.h"
#include "responsefile/file_look.h"

namespace polefit {

/// What a save is about to replace.
struct FormerFile {
  /// The path with its folder resolved.
  std::string path;
  FileLook look = {};
  std::uint64_t digest = 0;
  bool isChangedByOthers = false;
  bool isLink = false;
  /// The version that holds it, when it could be kept.
  std::optional<Version> version = {};
};

/// Keeps the file that the current name stands for as a former version, byte for byte. Nothing when
/// there is none. A version that cannot be kept is a notice and stops nothing.
std::optional<FormerFile> KeepFormerFile(Program& program);

/// Posts what the user would want to know of the file just replaced.
void TellOfFormerFile(Program& program, const FormerFile& former);

/// Keeps any other file as it is now, when there is one. A failure is a notice.
void KeepFile(Program& program, const std::string& path, VersionKind kind);

/// Remembers the current file as this program has just read or written it.
void RememberFile(Program& program);

/// Gives the file at `path` the content of a version again; what it replaces becomes a version. An
/// open file is shown anew; when the content is no Response Input File, the form keeps its data,
/// which are then in no file.
void PutVersionBack(Program& program, const std::string& path, const Version& version);
void PutContentBack(Program& program, const std::string& path, const std::string& bytes);

/// Shows a version as data that are in no file yet; what was typed and not saved comes back under
/// the name of its file.
void OpenVersionAsNew(Program& program, const Version& version);

}  // namespace polefit

#include "app/current_file.h"

#include <utility>

#include "app/file_commands.h"
#include "app/form_replacement.h"
#include "app/second_window.h"
#include "app/version_store.h"
#include "base/digest.h"
#include "responsefile/file_look.h"

namespace polefit {

namespace {

constexpr const char* kChanged = "changed file";
constexpr const char* kShared = "shared file";

/// The file that the data were read from or saved into last, or "".
std::string PathOfData(Program& program) {
  const Files& files = program.files;
  const std::string path =
      program.host.ResolvedPath(JoinPath(files.currentFolder, files.currentFileName));
  return path == program.document.known.path ? path : "";
}

}  // namespace

std::string CurrentFile::Follow() {
  std::string path = PathOfData(program_);
  if (path != path_) {
    path_ = path;
    seen_.reset();
    lock_.reset();
    program_.notices.Remove(kChanged);
    program_.notices.Remove(kShared);
    if (!path_.empty()) Claim();
  }
  return path;
}

void CurrentFile::Claim() {
  WindowClaim claim = ClaimForWindow(program_.host, "file", path_);
  lock_ = std::move(claim.lock);
  if (!claim.isTaken) return;
  program_.notices.Post({kShared, Urgency::worthKnowing,
                         "'" + CutPath(path_).name +
                             "' is open in another window too; of two saves the later one stays."});
}

void CurrentFile::Look() {
  if (path_.empty() || path_ != PathOfData(program_)) return;
  try {
    const std::optional<FileState> state = program_.host.StateOfFile(path_);
    if (!state) return;  // removed, or about to be replaced
    const bool isSame = seen_ && seen_->modified == state->modified && seen_->size == state->size;
    if (isSame) return;
    seen_ = state;
    const std::string bytes = program_.host.ReadFile(path_);
    const bool mayBeTorn = path_ == program_.document.tornPath;
    if (mayBeTorn && !LookAt(bytes).readsToItsEnd) return;  // by our own save, which has told
    const std::uint64_t digest = ContentDigest(bytes);
    if (digest == program_.document.known.digest) {
      program_.notices.Remove(kChanged);
    } else {
      PostChange(digest);
    }
  } catch (const RunTimeError&) {
    return;  // the next change is another time to look
  }
}

void CurrentFile::PostChange(std::uint64_t digest) {
  const auto reload = [&program = program_, path = path_] {
    if (AskBeforeReplacing(program) == kGoOn) OpenFile(program, path);
  };
  // The save that then replaces it keeps it as a former version, as it does every file.
  const auto keep = [&program = program_, path = path_, digest] {
    if (program.document.known.path == path) program.document.known.digest = digest;
  };
  program_.notices.Post({kChanged,
                         Urgency::asks,
                         "'" + CutPath(path_).name + "' was changed by another program.",
                         {{"Reload", reload}, {"Keep Mine", keep}}});
}

}  // namespace polefit

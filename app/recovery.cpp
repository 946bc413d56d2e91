#include "app/recovery.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "app/file_commands.h"
#include "app/form_replacement.h"
#include "base/time_text.h"
#include "form/changes.h"

namespace polefit {

namespace {

constexpr RecoveryKeeper::Clock kAfterLastChange = std::chrono::seconds(2);
constexpr RecoveryKeeper::Clock kAfterFirstChange = std::chrono::seconds(20);
constexpr const char* kSuffix = ".json";
constexpr const char* kLockSuffix = ".lock";
constexpr const char* kAbout = "recovery";

std::string RecoveryFolder(Host& host) {
  return Places::OfState(host).Recovery();
}

std::string PathOf(Host& host, const FormCells& cells) {
  return host.ResolvedPath(cells.files.CurrentPath());
}

/// A copy whose window is gone, now a version.
struct Recovered {
  RecoveryCopy copy;
  Version version;
};

/// Nothing while the window whose copy is called `path` lives. What is no copy goes: nobody could
/// restore it. `found` is another name where a copy was being written when the window went.
std::optional<Recovered> TakeOver(Host& host, const std::string& path, const std::string& found) {
  const auto lock = host.TakeLock(path + kLockSuffix, std::chrono::milliseconds(0));
  if (lock == nullptr) return std::nullopt;
  if (found != path) {
    host.DeleteFile(found);
    return std::nullopt;
  }
  const std::string text = host.ReadFile(path);
  const auto copy = ReadRecovery(text);
  std::optional<Recovered> recovered;
  if (copy) {
    recovered = {*copy, VersionStore(host).Keep(PathOf(host, copy->cells), text, copy->taken,
                                                VersionKind::unsaved)};
  }
  host.DeleteFile(path);
  return recovered;
}

std::vector<Recovered> TakeOverAll(Host& host) {
  std::vector<Recovered> all;
  const std::string folder = RecoveryFolder(host);
  for (const std::string& name : host.FilesIn(folder)) {
    const std::size_t end = name.find(kSuffix);
    if (end == std::string::npos || name.ends_with(kLockSuffix)) continue;
    try {
      const std::string path = JoinPath(folder, name.substr(0, end) + kSuffix);
      if (auto one = TakeOver(host, path, JoinPath(folder, name))) all.push_back(std::move(*one));
    } catch (const RunTimeError&) {
      continue;  // it stays and is offered another time
    }
  }
  return all;
}

void OfferOne(Program& program, const Recovered& one) {
  const auto restore = [&program, copy = one.copy] { RestoreCopy(program, copy); };
  program.notices.Post({kAbout,
                        Urgency::dataAtRisk,
                        one.copy.cells.files.currentFileName + " had changes of " +
                            ShortTime(one.copy.taken) + " that were not saved.",
                        {{"Restore", restore}, {"Discard", [] {}}}});
}

}  // namespace

void RecoveryKeeper::NoteChange(Clock now) {
  if (!firstChange_) firstChange_ = now;
  lastChange_ = now;
}

std::optional<RecoveryKeeper::Clock> RecoveryKeeper::Due() const {
  if (!firstChange_) return std::nullopt;
  return std::min(lastChange_ + kAfterLastChange, *firstChange_ + kAfterFirstChange);
}

void RecoveryKeeper::Keep() {
  firstChange_.reset();
  try {
    const FormCells cells = CellsOf(program_);
    if (HasUnsavedCells(program_, cells)) {
      Write(cells);
    } else {
      Remove();
    }
    hasToldFailure_ = false;
  } catch (const RunTimeError& error) {
    if (std::exchange(hasToldFailure_, true)) return;
    program_.notices.Post(
        {"recovery copy", Urgency::dataAtRisk,
         "What you type is not kept for the case of a crash: " + InWords(error) + "."});
  }
}

/// A name that no other window has.
void RecoveryKeeper::TakePath() {
  Host& host = program_.host;
  const std::string folder = RecoveryFolder(host);
  host.MakeOwnFolders(folder);
  const std::string stem = JoinPath(folder, std::to_string(Now(host)) + "-");
  for (int number = 1; lock_ == nullptr; ++number) {
    path_ = stem + std::to_string(number) + kSuffix;
    lock_ = host.TakeLock(path_ + kLockSuffix, std::chrono::milliseconds(0));
    if (lock_ != nullptr && host.StateOfFile(path_)) lock_.reset();
  }
}

void RecoveryKeeper::Write(const FormCells& cells) {
  if (lock_ == nullptr) TakePath();
  program_.host.ReplaceFile(path_, RecoveryText({cells, Now(program_.host)}), Readers::ownerOnly);
  isWritten_ = true;
}

void RecoveryKeeper::Remove() {
  if (std::exchange(isWritten_, false)) program_.host.DeleteFile(path_);
}

void OfferRecovered(Program& program, const std::function<void()>& showVersions) {
  std::vector<Recovered> all;
  try {
    all = TakeOverAll(program.host);
  } catch (const RunTimeError&) {
    return;  // a folder that cannot be listed has nothing to offer
  }
  if (all.size() == 1) OfferOne(program, all.front());
  if (all.size() < 2) return;
  program.notices.Post({kAbout,
                        Urgency::dataAtRisk,
                        std::to_string(all.size()) + " windows had changes that were not saved.",
                        {{"Show ...", showVersions}}});
}

void RestoreCopy(Program& program, const RecoveryCopy& copy) {
  if (AskBeforeReplacing(program) == kStop) return;
  ShowCells(program, copy.cells);
  if (EnterCurrentFolder(program)) {
    program.windows.CMDialog1.initialFolder = program.files.currentFolder;
  }
}

}  // namespace polefit

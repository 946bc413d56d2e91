#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "app/recovery_copy.h"
#include "app/version_store.h"
#include "form/state.h"

namespace polefit {

/// Keeps a copy of everything typed in this window that is in no file: 2 s after the last change,
/// at the latest 20 s after the first one that is not in it. It is written apart from the shared
/// file and held by a lock, so that a later start finds it only when this window is gone.
class RecoveryKeeper {
 public:
  using Clock = std::chrono::milliseconds;

  explicit RecoveryKeeper(Program& program) : program_(program) {}

  /// Something may have been typed; `now` is a steady time.
  void NoteChange(Clock now);
  /// When the copy is due; nothing while it is in step.
  std::optional<Clock> Due() const;
  /// Brings the copy in step with the form: writes it, or removes it where nothing would be lost. A
  /// failure is a notice, once.
  void Keep();
  bool HasCopy() const { return isWritten_; }

 private:
  void TakePath();
  void Write(const FormCells& cells);
  void Remove();

  Program& program_;
  std::optional<Clock> firstChange_;
  Clock lastChange_{};
  std::string path_;
  std::unique_ptr<HeldLock> lock_;
  bool isWritten_ = false;
  bool hasToldFailure_ = false;
};

/// What windows that are gone have left moves under the former versions of its file, and a notice
/// offers it. `showVersions` opens the list of former versions.
void OfferRecovered(Program& program, const std::function<void()>& showVersions);

/// Shows a copy again under its file's name. Nothing is written.
void RestoreCopy(Program& program, const RecoveryCopy& copy);

}  // namespace polefit

#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include "app/recovery.h"

namespace polefit {

/// Tells the keeper of the recovery copy when something is typed in the main form, and wakes it
/// when the copy is due.
class RecoveryTimer final : public QObject {
  Q_OBJECT

 public:
  RecoveryTimer(Program& program, QObject& form);

  /// From now on the form is watched.
  void Start();
  /// A command has ended, which may have saved what the copy holds.
  void FollowCommand();
  /// Before the program ends.
  void KeepNow();

 private:
  void NoteChange();

  RecoveryKeeper keeper_;
  QObject& form_;
  QElapsedTimer clock_;
  QTimer due_;
};

}  // namespace polefit

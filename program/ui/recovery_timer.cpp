#include "program/ui/recovery_timer.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QCheckBox>
#include <QLineEdit>

namespace polefit {

RecoveryTimer::RecoveryTimer(Program& program, QObject& form) : keeper_(program), form_(form) {
  due_.setSingleShot(true);
  connect(&due_, &QTimer::timeout, this, [this] { keeper_.Keep(); });
}

void RecoveryTimer::Start() {
  if (clock_.isValid()) return;
  clock_.start();
  for (const auto* box : form_.findChildren<QLineEdit*>()) {
    connect(box, &QLineEdit::textChanged, this, &RecoveryTimer::NoteChange);
  }
  for (const auto* box : form_.findChildren<QCheckBox*>()) {
    connect(box, &QCheckBox::toggled, this, &RecoveryTimer::NoteChange);
  }
  for (const auto* table : form_.findChildren<QAbstractItemView*>()) {
    const QAbstractItemModel* const cells = table->model();
    connect(cells, &QAbstractItemModel::dataChanged, this, &RecoveryTimer::NoteChange);
    connect(cells, &QAbstractItemModel::rowsInserted, this, &RecoveryTimer::NoteChange);
    connect(cells, &QAbstractItemModel::rowsRemoved, this, &RecoveryTimer::NoteChange);
    connect(cells, &QAbstractItemModel::modelReset, this, &RecoveryTimer::NoteChange);
  }
}

void RecoveryTimer::NoteChange() {
  const RecoveryKeeper::Clock now(clock_.elapsed());
  keeper_.NoteChange(now);
  due_.start(std::max(*keeper_.Due() - now, RecoveryKeeper::Clock(0)));
}

void RecoveryTimer::FollowCommand() {
  if (clock_.isValid() && keeper_.HasCopy()) KeepNow();
}

void RecoveryTimer::KeepNow() {
  if (!clock_.isValid()) return;
  due_.stop();
  keeper_.Keep();
}

}  // namespace polefit

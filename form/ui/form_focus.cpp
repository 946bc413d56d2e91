#include "form/ui/form_focus.h"

#include <QApplication>
#include <QEvent>
#include <QMenuBar>

namespace polefit {

FormFocus::FormFocus(QMainWindow& form) : QObject(&form), form_(form) {
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { Follow(now); });
}

void FormFocus::Follow(QWidget* now) {
  const bool isControl = now != nullptr && form_.isAncestorOf(now) && now != form_.menuBar();
  if (!isControl || now == control_) return;
  QWidget* before = control_;
  control_ = now;
  if (before != nullptr) Q_EMIT left(before);
  Q_EMIT entered(now);
}

void FormFocus::FollowPress(QWidget& control) {
  control.installEventFilter(this);
}

bool FormFocus::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress) {
    auto* control = qobject_cast<QWidget*>(watched);
    if (!control->isEnabled() && control_ != nullptr) Q_EMIT leaving(control_);
    if (control->isEnabled()) control->setFocus(Qt::MouseFocusReason);
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace polefit

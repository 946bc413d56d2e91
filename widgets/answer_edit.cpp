#include "widgets/answer_edit.h"

#include <QFocusEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <utility>

#include "widgets/mark.h"
#include "widgets/one_line.h"

namespace polefit {

namespace {

/// A menu that opens or a window that comes to the front takes the focus only for a while, and the
/// box takes no notice when it comes back.
bool ComesBack(Qt::FocusReason reason) {
  return reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason ||
         reason == Qt::ActiveWindowFocusReason;
}

}  // namespace

AnswerEdit::AnswerEdit(int length, bool selectsAll) : length_(length), selectsAll_(selectsAll) {
  KeepToOneLine(*this);
}

QSize AnswerEdit::sizeHint() const {
  const QFontMetrics metrics = fontMetrics();
  const int digits = metrics.horizontalAdvance(QString(length_, u'0'));
  return {digits + metrics.height(), QLineEdit::sizeHint().height()};
}

void AnswerEdit::SetMark(bool isFault, const QString& text) {
  if (isFault == isFault_ && text == mark_) return;
  isFault_ = isFault;
  mark_ = text;
  setAccessibleDescription(text);
  update();
}

void AnswerEdit::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  if (mark_.isEmpty() || hasFocus()) return;
  QPainter painter(this);
  DrawMark(painter, rect(), isFault_);
}

void AnswerEdit::ForgetTyping() {
  if (!isUndoAvailable() && !isRedoAvailable()) return;
  const int caret = cursorPosition();
  ShowAsItStands(*this, text());
  setCursorPosition(caret);
}

bool AnswerEdit::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool isForMenu = (key->matches(QKeySequence::Undo) && !isUndoAvailable()) ||
                           (key->matches(QKeySequence::Redo) && !isRedoAvailable());
    if (isForMenu) return false;
  }
  return QLineEdit::event(event);
}

void AnswerEdit::focusInEvent(QFocusEvent* event) {
  const int caret = cursorPosition();
  QLineEdit::focusInEvent(event);
  if (ComesBack(event->reason())) return;
  if (selectsAll_) {
    selectAll();
    // The press that gave the focus goes on to set the caret; its release selects again.
    pressGaveFocus_ = event->reason() == Qt::MouseFocusReason &&
                      QGuiApplication::mouseButtons() == Qt::LeftButton;
  } else {
    setCursorPosition(caret);
  }
}

void AnswerEdit::mouseReleaseEvent(QMouseEvent* event) {
  QLineEdit::mouseReleaseEvent(event);
  if (std::exchange(pressGaveFocus_, false) && !hasSelectedText()) selectAll();
}

}  // namespace polefit

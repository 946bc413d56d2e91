#include "widgets/answer_edit.h"

#include <QFocusEvent>
#include <QGuiApplication>
#include <utility>

#include "widgets/focus_reason.h"
#include "widgets/one_line.h"

namespace polefit {

AnswerEdit::AnswerEdit(int length, bool selectsAll) : length_(length), selectsAll_(selectsAll) {
  KeepToOneLine(*this);
}

QSize AnswerEdit::sizeHint() const {
  const QFontMetrics metrics = fontMetrics();
  const int digits = metrics.horizontalAdvance(QString(length_, u'0'));
  return {digits + metrics.height(), QLineEdit::sizeHint().height()};
}

void AnswerEdit::focusInEvent(QFocusEvent* event) {
  const int caret = cursorPosition();
  QLineEdit::focusInEvent(event);
  if (!FocusMovesInProgram(event->reason())) return;
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

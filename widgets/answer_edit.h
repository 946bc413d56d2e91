#pragma once

#include <QLineEdit>

namespace polefit {

/// A text box for an answer of about `length` digits. When it receives the focus it selects its
/// whole text, or leaves the caret where it is, however the focus came. Undo and Redo keys that it
/// has no use for go on to the menu.
class AnswerEdit final : public QLineEdit {
  Q_OBJECT

 public:
  AnswerEdit(int length, bool selectsAll);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

  /// A line below the text while the box has no focus: unbroken for a fault, dashed for a warning;
  /// `text` says it to a screen reader. None for an empty text.
  void SetMark(bool isFault, const QString& text);

  /// Forgets what was typed so far: its own undo no longer reaches behind this.
  void ForgetTyping();

 protected:
  bool event(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  int length_;
  bool selectsAll_;
  bool pressGaveFocus_ = false;
  bool isFault_ = false;
  QString mark_;
};

}  // namespace polefit

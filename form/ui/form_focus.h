#pragma once

#include <QMainWindow>
#include <QPointer>

namespace polefit {

/// Says which control of the form has the focus and which one it has left for another one of the
/// form. A menu, a message or another window takes the focus only for a while.
class FormFocus final : public QObject {
  Q_OBJECT

 public:
  explicit FormFocus(QMainWindow& form);

  /// The control that had the focus last, or none.
  QWidget* Control() const { return control_; }
  /// A press on this control gives it the focus, also where what the press leaves enables it.
  void FollowPress(QWidget& control);

 Q_SIGNALS:
  void left(QWidget* control);
  void entered(QWidget* control);
  /// The focus is about to go on from this control.
  void leaving(QWidget* control);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Follow(QWidget* now);

  QMainWindow& form_;
  QPointer<QWidget> control_;
};

}  // namespace polefit

#pragma once

#include <QFrame>
#include <QTimer>
#include <functional>
#include <string>
#include <vector>

#include "base/notice_board.h"

class QLabel;
class QPushButton;
class QToolButton;

namespace polefit {

/// A bar over the tabs that shows what waits for a decision, one notice at a time: "1 of 3", a
/// sentence, its buttons and one that closes it. A notice that is closed or decided is taken down;
/// who posted it may offer it again. The focus does not go to the bar; a screen reader announces
/// it.
class NoticeBar final : public QFrame {
  Q_OBJECT

 public:
  /// Runs a button's action and deals with the errors that come out.
  using Guard = std::function<void(const std::function<void()>&)>;

  /// `isBusy` says when the bar must neither come nor change. It does not either while a mouse
  /// button is pressed: what is under the mouse or being edited must not move.
  NoticeBar(Guard run, std::function<bool()> isBusy);

  /// Shows what waits on `board`, now and after each change. The bar ends before the board.
  void Watch(NoticeBoard& board);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Update();
  void ShowFirst();
  void ShowNotice(const Notice& notice);
  void Choose(std::size_t button);

  Guard run_;
  std::function<bool()> isBusy_;
  NoticeBoard* board_ = nullptr;
  /// What the bar shows at present.
  Notice shown_;
  QLabel* sentence_;
  QLabel* count_;
  std::vector<QPushButton*> buttons_;
  QToolButton* close_;
  QTimer retry_;
};

}  // namespace polefit

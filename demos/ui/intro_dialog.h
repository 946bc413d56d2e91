#pragma once

#include <QWidget>

namespace polefit {

/// The dialog of a first start. It forwards what is chosen and decides nothing.
class IntroDialog final : public QWidget {
  Q_OBJECT

 public:
  IntroDialog();

 Q_SIGNALS:
  void cmdRunIntro();
  void cmdCreateIntro();
  /// By its button or by the close box.
  void cmdExitIntro();

 protected:
  void closeEvent(QCloseEvent* event) override;
};

}  // namespace polefit

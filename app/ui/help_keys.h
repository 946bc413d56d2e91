#pragma once

#include <QObject>
#include <QString>
#include <memory>

#include "app/ui/help_window.h"

namespace polefit {

/// The heading in the manual of what has the focus in a window: its tab, panel or dialog.
QString ChapterOf(const QWidget& window);

/// Opens the manual where the user stands: on F1 in every window but the main one, whose menu has
/// that key.
class HelpKeys final : public QObject {
  Q_OBJECT

 public:
  HelpKeys();

  /// The chapter of this window, in a window that can be used beside it.
  void ShowHelpFor(QWidget& window);

  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  std::unique_ptr<HelpWindow> help_;
};

}  // namespace polefit

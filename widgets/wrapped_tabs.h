#pragma once

#include <QTabWidget>

namespace polefit {

/// A caption of a tab in two lines as nearly alike in length as its words allow; its number stays
/// with the word behind it.
QString InTwoLines(const QString& caption);

/// Tabs whose captions stand in two lines where the widget is too narrow for them in one.
class WrappedTabs final : public QTabWidget {
  Q_OBJECT

 public:
  WrappedTabs();

 protected:
  void resizeEvent(QResizeEvent* event) override;
};

}  // namespace polefit

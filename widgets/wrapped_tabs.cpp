#include "widgets/wrapped_tabs.h"

#include <QEvent>
#include <QStyleOptionTab>
#include <QTabBar>
#include <algorithm>

namespace polefit {

namespace {

class WrappedBar final : public QTabBar {
 public:
  void LayOutAnew() {
    // The bar keeps the hints of its tabs until its font changes.
    QEvent changed(QEvent::FontChange);
    changeEvent(&changed);
  }

 protected:
  QSize tabSizeHint(int index) const override {
    const QSize whole = QTabBar::tabSizeHint(index);
    if (!IsWrapped()) return whole;
    const QFontMetrics metrics = fontMetrics();
    const auto widthOf = [&metrics](const QString& text) {
      return metrics.size(Qt::TextShowMnemonic, text).width();
    };
    const QString caption = tabText(index);
    // A caption of one word is as high as the others.
    return whole + QSize(widthOf(InTwoLines(caption)) - widthOf(caption), metrics.lineSpacing());
  }

  void initStyleOption(QStyleOptionTab* option, int index) const override {
    QTabBar::initStyleOption(option, index);
    if (IsWrapped()) option->text = InTwoLines(tabText(index));
  }

 private:
  bool IsWrapped() const {
    int whole = 0;
    for (int tab = 0; tab < count(); ++tab) whole += QTabBar::tabSizeHint(tab).width();
    return whole > parentWidget()->width();
  }
};

}  // namespace

QString InTwoLines(const QString& caption) {
  const auto longerLine = [&caption](qsizetype blank) {
    return std::max(blank, caption.size() - blank - 1);
  };
  qsizetype best = -1;
  const qsizetype behindNumber = caption.indexOf(' ') + 1;
  for (qsizetype at = caption.indexOf(' ', behindNumber); at > 0;
       at = caption.indexOf(' ', at + 1)) {
    if (best < 0 || longerLine(at) < longerLine(best)) best = at;
  }
  return best < 0 ? caption : QString(caption).replace(best, 1, '\n');
}

WrappedTabs::WrappedTabs() {
  setTabBar(new WrappedBar);
}

void WrappedTabs::resizeEvent(QResizeEvent* event) {
  static_cast<WrappedBar*>(tabBar())->LayOutAnew();
  QTabWidget::resizeEvent(event);
}

}  // namespace polefit

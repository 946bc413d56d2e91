#include "widgets/status_line.h"

#include <QEvent>
#include <QPainter>
#include <QStyleOptionButton>
#include <algorithm>

#include "widgets/cut_label.h"

namespace polefit {

class CutButton final : public QPushButton {
 public:
  explicit CutButton(const char* name) {
    setObjectName(name);
    setFlat(true);
    // The list and the run have keys of their own; Tab stays with the answers.
    setFocusPolicy(Qt::NoFocus);
  }

  void SetTexts(const QStringList& texts) {
    texts_ = texts;
    setText(texts.value(0).replace('&', "&&"));
    setVisible(!text().isEmpty());
    update();
  }

  /// Becomes as wide as the first text that needs no more than `most`, or else so wide; returns
  /// how much that is.
  int Take(int most) {
    if (isHidden()) return 0;
    const auto fits = [&](const QString& text) { return WidthOf(*this, text) <= most; };
    const auto text = std::find_if(texts_.begin(), texts_.end(), fits);
    setFixedWidth(text == texts_.end() ? std::max(1, most) : WidthOf(*this, *text));
    return width();
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QStyleOptionButton option;
    initStyleOption(&option);
    QPainter painter(this);
    style()->drawControl(QStyle::CE_PushButtonBevel, &option, &painter, this);
    painter.end();
    DrawFitting(*this, texts_, Qt::AlignLeft);
  }

 private:
  QStringList texts_;
};

StatusLine::StatusLine()
    : findings_(new CutButton("cmdFindings")),
      run_(new CutButton("cmdRunState")),
      readOut_(new CutLabel) {
  readOut_->setObjectName("lblReadOut");
  readOut_->setTextFormat(Qt::PlainText);
  readOut_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  addWidget(findings_);
  addWidget(run_);
  addPermanentWidget(readOut_, 1);
  connect(findings_, &QPushButton::clicked, this, &StatusLine::findingsClicked);
  connect(run_, &QPushButton::clicked, this, &StatusLine::runClicked);
  ShowFindings({});
  ShowRun({});
  ShowReadOut({});
}

void StatusLine::ShowFindings(const QStringList& texts) {
  findings_->SetTexts(texts);
  findings_->setAccessibleName(tr("Findings: %1").arg(texts.value(0)));
  findings_->setToolTip(texts.value(0) + '\n' + tr("Shows or hides the list of findings (F7)"));
  Arrange();
}

void StatusLine::ShowRun(const QStringList& texts) {
  run_->SetTexts(texts);
  run_->setAccessibleName(tr("Run: %1").arg(texts.value(0)));
  run_->setToolTip(texts.value(0) + '\n' + tr("Shows or hides the run (F9)"));
  Arrange();
}

void StatusLine::ShowReadOut(const QStringList& texts) {
  readOut_->SetTexts(texts);
  readOut_->setToolTip(texts.value(0));
  const bool wasHidden = readOut_->isHidden();
  readOut_->setVisible(!texts.value(0).isEmpty());
  if (readOut_->isHidden() != wasHidden) Arrange();
}

/// Findings and run take what they need, up to half of the bar; the read-out, which changes with
/// every move of the mouse and must not shift the others, has the rest.
void StatusLine::Arrange() {
  const int room = width() - 2 * fontMetrics().height();
  const int most = readOut_->isHidden() ? room : room / 2;
  const int taken = findings_->Take(run_->isHidden() ? most : most / 2);
  run_->Take(most - taken);
}

void StatusLine::resizeEvent(QResizeEvent* event) {
  Arrange();
  QStatusBar::resizeEvent(event);
}

void StatusLine::changeEvent(QEvent* event) {
  QStatusBar::changeEvent(event);
  if (event->type() == QEvent::FontChange) Arrange();
}

}  // namespace polefit

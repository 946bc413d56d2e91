#include "widgets/status_line.h"

#include <QPainter>
#include <QStyleOptionButton>

#include "widgets/cut_label.h"

namespace polefit {

namespace {

/// What the places take of the bar. The read-out is the one that must not jump about.
constexpr int kFindingsShare = 3;
constexpr int kRunShare = 4;
constexpr int kReadOutShare = 4;

class CutButton final : public QPushButton {
 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QStyleOptionButton option;
    initStyleOption(&option);
    QPainter painter(this);
    style()->drawControl(QStyle::CE_PushButtonBevel, &option, &painter, this);
    painter.end();
    DrawCut(*this, text().replace("&&", "&"), Qt::AlignLeft);
  }
};

/// As wide as the bar gives it, however long its text.
template <typename Place>
Place* MakePlace(const char* name) {
  auto* place = new Place;
  place->setObjectName(name);
  place->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  place->setMinimumWidth(1);
  return place;
}

QPushButton* MakeButtonPlace(const char* name, const QString& tip) {
  QPushButton* place = MakePlace<CutButton>(name);
  place->setFlat(true);
  // The list and the run have keys of their own; Tab stays with the answers.
  place->setFocusPolicy(Qt::NoFocus);
  place->setToolTip(tip);
  return place;
}

QString WithoutMnemonic(QString text) {
  return text.replace('&', "&&");
}

template <typename Place>
void ShowText(Place& place, const QString& text) {
  place.setText(text);
  place.setVisible(!text.isEmpty());
}

}  // namespace

StatusLine::StatusLine()
    : findings_(MakeButtonPlace("cmdFindings", tr("Shows or hides the list of findings (F7)"))),
      run_(MakeButtonPlace("cmdRunState", {})),
      readOut_(MakePlace<CutLabel>("lblReadOut")) {
  readOut_->setTextFormat(Qt::PlainText);
  readOut_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  addWidget(findings_, kFindingsShare);
  addWidget(run_, kRunShare);
  addPermanentWidget(readOut_, kReadOutShare);
  connect(findings_, &QPushButton::clicked, this, &StatusLine::findingsClicked);
  connect(run_, &QPushButton::clicked, this, &StatusLine::runClicked);
  ShowFindings({});
  ShowRun({});
  ShowReadOut({});
}

void StatusLine::ShowFindings(const QString& text) {
  ShowText(*findings_, WithoutMnemonic(text));
  findings_->setAccessibleName(tr("Findings: %1").arg(text));
}

void StatusLine::ShowRun(const QString& text) {
  ShowText(*run_, WithoutMnemonic(text));
  run_->setAccessibleName(tr("Run: %1").arg(text));
  run_->setToolTip(text + '\n' + tr("Shows or hides the run (F9)"));
}

void StatusLine::ShowReadOut(const QString& text) {
  ShowText(*readOut_, text);
  readOut_->setToolTip(text);
}

}  // namespace polefit

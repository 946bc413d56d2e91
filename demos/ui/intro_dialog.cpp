#include "demos/ui/intro_dialog.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "widgets/captions.h"

namespace polefit {

namespace {

struct IntroButton {
  const char* name;
  const char* caption;
  void (IntroDialog::*chosen)();
};

constexpr IntroButton kButtons[] = {
    {"cmdRunIntro", QT_TRANSLATE_NOOP("IntroDialog", "&Run a Demo"), &IntroDialog::cmdRunIntro},
    {"cmdCreateIntro", QT_TRANSLATE_NOOP("IntroDialog", "&Create Your Data"),
     &IntroDialog::cmdCreateIntro},
    {"cmdExitIntro", QT_TRANSLATE_NOOP("IntroDialog", "E&xit"), &IntroDialog::cmdExitIntro},
};

}  // namespace

IntroDialog::IntroDialog() {
  setObjectName("frmIntro");
  setWindowTitle(tr("Introduction to Veltra Based Software"));
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(24, 20, 24, 16);
  rows->setSpacing(14);
  // A label without a buddy shows "&" as it stands: no "&&" as in the captions of buttons.
  rows->addWidget(MakeTitle(tr("Polefit™  Intro & Demos")));
  rows->addWidget(MakeSentence(
      "lblFirst",
      tr("Polefit™ program determines the 'optimal' Pole/Zero constellation of a filter's transfer "
         "function with given input and output data in the frequency domain.")));
  rows->addWidget(MakeSentence(
      "lblSecond",
      tr("Polefit™ finds the pole-zero locations of a transfer function, H(s), for the optimum "
         "matched filter.  H(s) = Desired Signal out (Yout) divided by given input signal (Yin) "
         "where both Yout and Yin are given in the frequency domain.")));
  rows->addStretch();
  auto* buttons = new QHBoxLayout;
  for (const IntroButton& entry : kButtons) {
    auto* button = new QPushButton(tr(entry.caption));
    button->setObjectName(entry.name);
    button->setAutoDefault(true);
    connect(button, &QPushButton::clicked, this, entry.chosen);
    buttons->addWidget(button);
  }
  rows->addLayout(buttons);
}

void IntroDialog::closeEvent(QCloseEvent* event) {
  QWidget::closeEvent(event);
  Q_EMIT cmdExitIntro();
}

}  // namespace polefit

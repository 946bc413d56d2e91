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
    {"cmdRunIntro", "&Run a Demo", &IntroDialog::cmdRunIntro},
    {"cmdCreateIntro", "&Create Your Data", &IntroDialog::cmdCreateIntro},
    {"cmdExitIntro", "E&xit", &IntroDialog::cmdExitIntro},
};

}  // namespace

IntroDialog::IntroDialog() {
  setObjectName("frmIntro");
  setWindowTitle("Introduction to Veltra Based Software");
  auto* const rows = new QVBoxLayout(this);
  rows->setContentsMargins(24, 20, 24, 16);
  rows->setSpacing(14);
  // The caption holds "&&" for a literal ampersand; a label without a buddy shows it as it stands.
  rows->addWidget(MakeTitle("Polefit™  Intro & Demos"));
  rows->addWidget(MakeSentence(
      "lblFirst",
      "Polefit™ program determines the 'optimal' Pole/Zero constellation of a filter's transfer "
      "function with given input and output data in the frequency domain."));
  rows->addWidget(MakeSentence(
      "lblSecond",
      "Polefit™ finds the pole-zero locations of a transfer function, H(s), for the optimum "
      "matched filter.  H(s) = Desired Signal out (Yout) divided by given input signal (Yin) "
      "where both Yout and Yin are given in the frequency domain."));
  rows->addStretch();
  auto* const buttons = new QHBoxLayout;
  for (const IntroButton& entry : kButtons) {
    auto* const button = new QPushButton(entry.caption);
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

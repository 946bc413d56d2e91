#include "demos/ui/demo_dialog.h"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "demos/demo_runner.h"
#include "widgets/captions.h"
#include "widgets/controls.h"

namespace polefit {

DemoDialog::DemoDialog() : exams_(new QButtonGroup(this)), whatRuns_(new QLabel) {
  setObjectName("frmDemo");
  setWindowTitle(tr("Polefit Demo ... a Veltra Based Application"));
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(24, 20, 24, 16);
  rows->setSpacing(14);
  rows->addWidget(MakeTitle(tr("Polefit™  Demos")));
  rows->addWidget(MakeSentence(
      "lblInstruction",
      tr("Select a Matched filter problem from the list below for your demo run.  Note the "
         "approximate run time for your chosen problem.  (These times were for a 486/33 PC.)  Your "
         "demo will be silent for this run-time period.  When a solution is found, Polefit™ will "
         "then display output text and a graph or two.")));
  rows->addLayout(BuildTable());
  rows->addStretch();
  auto* buttons = new QDialogButtonBox;
  auto* run = new QPushButton(tr("&Run Demo"));
  auto* cancel = new QPushButton(tr("&Cancel"));
  run->setObjectName("cmdRunDemo");
  cancel->setObjectName("cmdCancelDemo");
  for (QPushButton* const button : {run, cancel}) button->setAutoDefault(true);
  buttons->addButton(run, QDialogButtonBox::AcceptRole);
  buttons->addButton(cancel, QDialogButtonBox::RejectRole);
  whatRuns_->setObjectName("lblWhatRuns");
  auto* below = new QHBoxLayout;
  below->addWidget(whatRuns_, 1);
  below->addWidget(buttons);
  rows->addLayout(below);
  connect(exams_, &QButtonGroup::idClicked, this, &DemoDialog::examChosen);
  connect(run, &QPushButton::clicked, this, &DemoDialog::cmdRunDemo);
  connect(cancel, &QPushButton::clicked, this, &DemoDialog::cmdCancelDemo);
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this,
          &DemoDialog::cmdCancelDemo);
}

QGridLayout* DemoDialog::BuildTable() {
  auto* table = new QGridLayout;
  table->setHorizontalSpacing(24);
  table->addWidget(MakeHeader("lblFileName", tr("File Name ________")), 0, 0);
  table->addWidget(MakeHeader("lblRunTime", tr("Run Time (Seconds)")), 0, 1);
  table->addWidget(MakeHeader("lblProblem", tr("Polefit problem with ... _____________________")),
                   0, 2);
  table->setColumnStretch(2, 1);
  for (int index = 1; index <= static_cast<int>(kDemos.size()); ++index) AddRow(table, index);
  return table;
}

void DemoDialog::AddRow(QGridLayout* table, int index) {
  const Demo& demo = kDemos.at(static_cast<std::size_t>(index - 1));
  const QString number = QString::number(index);
  auto* exam = new QRadioButton(ToQString(demo.fileName));
  auto* time = new QLabel(ToQString(demo.runTime));
  auto* description = new QLabel(PlainCaption(ToQString(demo.description)));
  exam->setObjectName("Exam" + number);
  time->setObjectName("ExTime" + number);
  description->setObjectName("Description" + number);
  exam->setAccessibleDescription(description->text());
  exams_->addButton(exam, index);
  table->addWidget(exam, index, 0);
  table->addWidget(time, index, 1, Qt::AlignHCenter);
  table->addWidget(description, index, 2);
}

void DemoDialog::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    Q_EMIT cmdRunDemo();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void DemoDialog::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (event->spontaneous()) return;
  // A tick from the last time would tell of an example that is no longer the current file.
  exams_->setExclusive(false);
  for (QAbstractButton* const exam : exams_->buttons()) exam->setChecked(false);
  exams_->setExclusive(true);
  exams_->button(1)->setFocus();  // so that Space chooses it
  Q_EMIT shown();
}

void DemoDialog::ShowWhatRuns(const QString& text) {
  whatRuns_->setText(text);
}

void DemoDialog::closeEvent(QCloseEvent* event) {
  QWidget::closeEvent(event);
  Q_EMIT cmdCancelDemo();
}

}  // namespace polefit

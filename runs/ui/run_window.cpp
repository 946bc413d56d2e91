#include "runs/ui/run_window.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>

#include "widgets/controls.h"

namespace polefit {

namespace {

constexpr int kPollMilliseconds = 150;
constexpr int kMostLines = 20000;
/// Of the screen's free area.
constexpr double kLargestShare = 0.9;

QLabel* MakeLabel(const char* name) {
  auto* label = new QLabel;
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setWordWrap(true);
  return label;
}

QLabel* MakeStrongLabel(const char* name) {
  QLabel* const label = MakeLabel(name);
  QFont font = label->font();
  font.setBold(true);
  label->setFont(font);
  return label;
}

QPlainTextEdit* MakeOutput() {
  auto* output = new QPlainTextEdit;
  output->setObjectName("txtOutput");
  output->setAccessibleName(QObject::tr("Output of the solver"));
  output->setReadOnly(true);
  output->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  output->setMaximumBlockCount(kMostLines);
  output->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  return output;
}

}  // namespace

RunWindow::RunWindow(RunWatch& watch)
    : watch_(watch),
      lblDataFile_(MakeStrongLabel("lblDataFile")),
      lblCommand_(MakeLabel("lblCommand")),
      output_(MakeOutput()),
      lblState_(MakeLabel("lblState")),
      lblElapsed_(MakeLabel("lblElapsed")),
      progress_(new QProgressBar),
      lblVerdict_(MakeStrongLabel("lblVerdict")),
      lblEnding_(MakeLabel("lblEnding")),
      cmdStop_(MakeButton("cmdStop", tr("&Stop"))),
      cmdReport_(MakeButton("cmdReport", tr("Show &Report"))),
      cmdImproved_(MakeButton("cmdImproved", tr("Take &Improved Values"))) {
  setObjectName("frmRun");
  Build();
  for (QPushButton* const button : {cmdStop_, cmdReport_, cmdImproved_}) button->setEnabled(false);
  timer_.setInterval(kPollMilliseconds);
  connect(&timer_, &QTimer::timeout, this, &RunWindow::Poll);
  connect(cmdStop_, &QPushButton::clicked, this, &RunWindow::Stop);
  connect(cmdReport_, &QPushButton::clicked, this, &RunWindow::reportWanted);
  connect(cmdImproved_, &QPushButton::clicked, this, &RunWindow::improvedValuesWanted);
}

void RunWindow::Build() {
  progress_->setObjectName("progress");
  progress_->setAccessibleName(tr("Evaluations used"));
  progress_->setFormat(tr("%v of %m evaluations"));
  lblCommand_->setFont(output_->font());
  auto* state = new QHBoxLayout;
  state->addWidget(lblState_, 1);
  state->addWidget(lblElapsed_);
  lblElapsed_->setWordWrap(false);
  auto* close = MakeButton("cmdClose", tr("&Close"));
  connect(close, &QPushButton::clicked, this, &QWidget::close);
  for (const QKeySequence& key :
       {QKeySequence(QKeySequence::Close), QKeySequence(Qt::Key_Escape)}) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, &QWidget::close);
  }
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(cmdStop_);
  buttons->addStretch();
  for (QPushButton* const button : {cmdReport_, cmdImproved_, close}) buttons->addWidget(button);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(16, 14, 16, 14);
  rows->setSpacing(10);
  rows->addWidget(lblDataFile_);
  rows->addWidget(lblCommand_);
  rows->addWidget(output_, 1);
  rows->addLayout(state);
  rows->addWidget(progress_);
  rows->addWidget(lblVerdict_);
  rows->addWidget(lblEnding_);
  rows->addLayout(buttons);
  constexpr int kColumns = 110;
  constexpr int kLines = 32;
  const QFontMetrics metrics(output_->font());
  const QSize wanted(metrics.horizontalAdvance(QString(kColumns, '0')),
                     kLines * metrics.lineSpacing());
  resize(wanted.boundedTo(screen()->availableSize() * kLargestShare));
}

void RunWindow::ShowInFront() {
  show();
  raise();
  activateWindow();
}

void RunWindow::ShowRun() {
  if (!watch_.IsOn() || watch_.Run()->process == shown_) return;
  const RunRecord& run = *watch_.Run();
  shown_ = run.process;
  const QString dataFile = QString::fromStdString(run.DataFile());
  const Command command{run.words.front(), {run.words.begin() + 1, run.words.end()}};
  setWindowTitle(tr("%1 - Polefit Run").arg(dataFile));
  lblDataFile_->setText(dataFile.isEmpty() ? tr("No data file was chosen.") : dataFile);
  lblCommand_->setText("> " + QString::fromStdString(CommandLine(command)));
  output_->clear();
  lblState_->setText(tr("Running"));
  progress_->setRange(0, 0);
  progress_->show();
  lblVerdict_->clear();
  lblEnding_->clear();
  cmdStop_->setText(run.stops > 0 ? tr("&End at Once") : tr("&Stop"));
  cmdStop_->setEnabled(true);
  cmdReport_->setEnabled(false);
  cmdImproved_->setEnabled(false);
  ShowInFront();
  output_->setFocus();
  timer_.start();
  Poll();
}

void RunWindow::Poll() {
  ShowNews(watch_.Poll());
  ShowTime();
  if (watch_.End()) ShowEnd(*watch_.End());
}

void RunWindow::ShowNews(const RunLog::News& news) {
  QStringList lines;
  if (news.isCut) lines << tr("[... output left out ...]");
  for (const std::string& line : news.lines) lines << QString::fromStdString(line);
  if (!lines.isEmpty()) output_->appendPlainText(lines.join('\n'));
  if (const auto progress = watch_.Progress()) {
    progress_->setRange(0, progress->limit);
    progress_->setValue(std::min(progress->evaluations, progress->limit));
  }
}

void RunWindow::ShowTime() {
  constexpr std::int64_t kMinute = 60;
  const std::int64_t seconds = watch_.Seconds();
  lblElapsed_->setText(
      tr("Elapsed %1:%2").arg(seconds / kMinute).arg(seconds % kMinute, 2, 10, QChar('0')));
}

void RunWindow::Stop() {
  switch (watch_.Stop()) {
    case Stopping::asked:
      lblState_->setText(tr("Stopping; the solver writes its best values"));
      cmdStop_->setText(tr("&End at Once"));
      break;
    case Stopping::endedAtOnce:
      lblState_->setText(tr("Ending at once"));
      break;
    case Stopping::isNotOurs:
      lblState_->setText(tr("This run was started by another user, who alone may stop it."));
      break;
    case Stopping::isOver:
      break;
  }
}

void RunWindow::ShowEnd(const RunEnd& end) {
  timer_.stop();
  lblState_->setText(tr("Ended"));
  lblVerdict_->setText(QString::fromStdString(end.verdict.text));
  lblEnding_->setText(QString::fromStdString(end.verdict.ending));
  progress_->hide();
  cmdStop_->setText(tr("&Stop"));
  cmdStop_->setEnabled(false);
  cmdReport_->setEnabled(end.hasReport);
  cmdImproved_->setEnabled(end.hasValues);
  if (cmdReport_->isEnabled()) cmdReport_->setFocus();
  // A closed console comes back with its verdict, but takes no key from who types elsewhere.
  setAttribute(Qt::WA_ShowWithoutActivating);
  show();
  setAttribute(Qt::WA_ShowWithoutActivating, false);
  Q_EMIT runEnded(end.hasValues);
}

}  // namespace polefit

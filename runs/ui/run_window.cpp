#include "runs/ui/run_window.h"

#include <QDateTime>
#include <QFile>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <utility>

#include "base/text.h"
#include "platform/linux/detached_process.h"
#include "platform/paths.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

constexpr int kPollMilliseconds = 150;
constexpr int kMostLines = 20000;

QLabel* MakeLabel(const char* name) {
  auto* const label = new QLabel;
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
  auto* const output = new QPlainTextEdit;
  output->setObjectName("txtOutput");
  output->setAccessibleName(QObject::tr("Output of the solver"));
  output->setReadOnly(true);
  output->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  output->setLineWrapMode(QPlainTextEdit::NoWrap);
  output->setMaximumBlockCount(kMostLines);
  output->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  return output;
}

/// The solver writes single-byte text, but the names in it may come from the shell as UTF-8.
QString TextOfLine(const QByteArray& bytes) {
  if (QUtf8StringView(bytes).isValidUtf8()) return QString::fromUtf8(bytes);
  return QString::fromStdString(FromWindows1252(bytes.toStdString()));
}

}  // namespace

RunWindow::RunWindow()
    : lblDataFile_(MakeStrongLabel("lblDataFile")),
      lblCommand_(MakeLabel("lblCommand")),
      output_(MakeOutput()),
      lblState_(MakeLabel("lblState")),
      lblElapsed_(MakeLabel("lblElapsed")),
      progress_(new QProgressBar),
      lblVerdict_(MakeStrongLabel("lblVerdict")),
      cmdStop_(MakeButton("cmdStop", "&Stop")),
      cmdReport_(MakeButton("cmdReport", "Show &Report")),
      cmdImproved_(MakeButton("cmdImproved", "Take &Improved Values")) {
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
  auto* const state = new QHBoxLayout;
  state->addWidget(lblState_, 1);
  state->addWidget(lblElapsed_);
  lblElapsed_->setWordWrap(false);
  auto* const close = MakeButton("cmdClose", "&Close");
  connect(close, &QPushButton::clicked, this, &QWidget::close);
  for (const QKeySequence& key :
       {QKeySequence(QKeySequence::Close), QKeySequence(Qt::Key_Escape)}) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, &QWidget::close);
  }
  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(cmdStop_);
  buttons->addStretch();
  for (QPushButton* const button : {cmdReport_, cmdImproved_, close}) buttons->addWidget(button);
  auto* const rows = new QVBoxLayout(this);
  rows->setContentsMargins(16, 14, 16, 14);
  rows->setSpacing(10);
  rows->addWidget(lblDataFile_);
  rows->addWidget(lblCommand_);
  rows->addWidget(output_, 1);
  rows->addLayout(state);
  rows->addWidget(progress_);
  rows->addWidget(lblVerdict_);
  rows->addLayout(buttons);
  constexpr int kColumns = 130;
  constexpr int kLines = 32;
  const QFontMetrics metrics(output_->font());
  resize(metrics.horizontalAdvance(QString(kColumns, '0')), kLines * metrics.lineSpacing());
}

long RunWindow::Start(const Command& command) {
  const RunRecord run = StartRun(command);
  Watch(run, ProgramFolderOf(command));
  return run.processId;
}

void RunWindow::Find(const std::string& programFolder) {
  const std::optional<RunRecord> run = ReadRunRecord(programFolder);
  const bool watched = run == run_ && timer_.isActive();
  if (run && !watched && IsRunning(*run)) Watch(*run, programFolder);
}

void RunWindow::ShowInFront() {
  show();
  raise();
  activateWindow();
}

void RunWindow::Watch(const RunRecord& run, const std::string& programFolder) {
  run_ = run;
  programFolder_ = programFolder;
  logRead_ = 0;
  pending_.clear();
  lastLine_.clear();
  lineBefore_.clear();
  stopAsked_ = false;
  const QString dataFile = QString::fromStdString(run.dataFile);
  setWindowTitle(tr("%1 - Polefit Run").arg(dataFile));
  lblDataFile_->setText(dataFile);
  lblCommand_->setText("> " + QString::fromStdString(run.command));
  output_->clear();
  lblState_->setText(tr("Running"));
  progress_->setRange(0, 0);
  progress_->show();
  lblVerdict_->clear();
  cmdStop_->setText(tr("&Stop"));
  cmdStop_->setEnabled(true);
  cmdReport_->setEnabled(false);
  cmdImproved_->setEnabled(false);
  ShowInFront();
  output_->setFocus();
  timer_.start();
  Poll();
}

void RunWindow::Poll() {
  // Asked before the log is read: what an ended run wrote is then all there.
  const bool ended = !IsRunning(run_);
  ReadLog();
  ShowTime();
  if (ended) End();
}

void RunWindow::ReadLog() {
  QFile log(QString::fromStdString(RunLogPath(programFolder_)));
  if (!log.open(QIODevice::ReadOnly) || !log.seek(logRead_)) return;
  const QByteArray bytes = log.readAll();
  logRead_ += bytes.size();
  pending_ += bytes;
  TakeLines(false);
}

/// Takes the whole lines of what has been read, with `all` a last unfinished one too.
void RunWindow::TakeLines(bool all) {
  qsizetype from = 0;
  for (qsizetype end = 0; (end = pending_.indexOf('\n', from)) >= 0; from = end + 1) {
    TakeLine(pending_.mid(from, end - from));
  }
  pending_.remove(0, from);
  if (all && !pending_.isEmpty()) TakeLine(std::exchange(pending_, {}));
}

void RunWindow::TakeLine(const QByteArray& bytes) {
  const QString line = TextOfLine(bytes.endsWith('\r') ? bytes.chopped(1) : bytes);
  output_->appendPlainText(line);
  const std::string text = line.toStdString();
  if (!line.trimmed().isEmpty() && !IsFigures(text)) lineBefore_ = std::exchange(lastLine_, text);
  if (const auto progress = ProgressOf(text)) {
    progress_->setRange(0, progress->limit);
    progress_->setValue(std::min(progress->evaluations, progress->limit));
  }
}

void RunWindow::ShowTime() {
  constexpr qint64 kNanosecondsPerMillisecond = 1'000'000;
  const qint64 started = run_.started / kNanosecondsPerMillisecond;
  const qint64 seconds = (QDateTime::currentMSecsSinceEpoch() - started) / 1000;
  lblElapsed_->setText(tr("Elapsed %1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QChar('0')));
}

void RunWindow::Stop() {
  if (!IsRunning(run_)) return;
  EndGroup(run_.processId, stopAsked_);
  lblState_->setText(stopAsked_ ? tr("Ending at once")
                                : tr("Stopping; the solver writes its best values"));
  stopAsked_ = true;
  cmdStop_->setText(tr("&End at Once"));
}

std::string RunWindow::Path(const char* name) const {
  return JoinPath(programFolder_, name);
}

void RunWindow::End() {
  timer_.stop();
  TakeLines(true);
  // What the solver started may have outlived it.
  if (stopAsked_) EndGroup(run_.processId, true);
  const bool hasValues = IsResultOf(run_, Path("last-run.ini"));
  const bool hasReport = IsResultOf(run_, Path("~pft-out.txt"));
  const Verdict verdict = VerdictOn({lastLine_, lineBefore_, hasReport, stopAsked_, hasValues});
  lblState_->setText(tr("Ended"));
  lblVerdict_->setText(QString::fromStdString(verdict.text));
  progress_->hide();
  cmdStop_->setEnabled(false);
  cmdReport_->setEnabled(hasReport);
  cmdImproved_->setEnabled(hasValues);
  if (cmdReport_->isEnabled()) cmdReport_->setFocus();
  // A closed console comes back with its verdict, but takes no key from who types elsewhere.
  setAttribute(Qt::WA_ShowWithoutActivating);
  show();
  setAttribute(Qt::WA_ShowWithoutActivating, false);
}

}  // namespace polefit

#include "runs/ui/run_panel.h"

#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "check/finding_place.h"
#include "check/ui/finding_item.h"
#include "exchange/ui/copy_as.h"
#include "form/ui/main_window.h"
#include "form/ui/panel_entry.h"
#include "runs/fit_quality.h"
#include "runs/ui/error_plot.h"
#include "runs/ui/run_parts.h"
#include "widgets/controls.h"
#include "widgets/cut_label.h"
#include "widgets/status_line.h"

namespace polefit {

namespace {

constexpr int kPollMilliseconds = 150;
/// What takes no longer needs no panel.
constexpr qint64 kLastingMilliseconds = 1000;

/// The verdict as it stands in the status bar, "Good (form changed since): rms 0.06 %, ...", its
/// two chief figures, and the first word alone.
QStringList StatusTexts(const RunEnd& end, bool isOutdated) {
  const std::string word = WordOf(end.verdict.outcome);
  QStringList texts = {QString::fromStdString(end.verdict.text)};
  const auto quality = QualityOf(end.figures);
  if (quality) texts << QString::fromStdString(word + ": " + quality->brief);
  texts << QString::fromStdString(word);
  for (QString& text : texts) {
    const qsizetype colon = text.indexOf(':');
    if (isOutdated)
      text.insert(colon < 0 ? text.size() : colon, QObject::tr(" (form changed since)"));
  }
  return texts;
}

}  // namespace

RunPanel::RunPanel(MainWindow& form, RunWatch& watch)
    : QDockWidget(tr("Run"), &form),
      form_(form),
      watch_(watch),
      parts_(std::make_unique<RunParts>()) {
  setObjectName("frmRun");
  setFeatures(DockWidgetClosable | DockWidgetFloatable | DockWidgetMovable);
  setAllowedAreas(Qt::BottomDockWidgetArea);
  setWidget(parts_->content);
  form_.addDockWidget(Qt::BottomDockWidgetArea, this);
  if (auto* findings = form_.findChild<QDockWidget*>("findingsPanel")) {
    form_.tabifyDockWidget(findings, this);
  }
  hide();
  timer_.setInterval(kPollMilliseconds);
  Connect();
}

RunPanel::~RunPanel() = default;

void RunPanel::Connect() {
  connect(&timer_, &QTimer::timeout, this, &RunPanel::Poll);
  connect(parts_->cmdStop, &QPushButton::clicked, this, &RunPanel::Stop);
  connect(parts_->cmdReport, &QPushButton::clicked, this, &RunPanel::reportWanted);
  connect(parts_->cmdImproved, &QPushButton::clicked, this, &RunPanel::improvedValuesWanted);
  connect(parts_->cmdClose, &QPushButton::clicked, this, &QWidget::close);
  auto* formats = new QMenu(parts_->cmdCopyAs);
  AddExportFormats(*formats,
                   [this](const ExportFormatName& format) { Q_EMIT copyAsWanted(format); });
  parts_->cmdCopyAs->setMenu(formats);
  for (const auto chosen : {&QListWidget::itemActivated, &QListWidget::itemClicked}) {
    connect(parts_->findings, chosen, this, [this] { GoTo(parts_->findings->currentRow()); });
  }
  connect(this, &QDockWidget::topLevelChanged, this, &RunPanel::ShowTitle);
  connect(&form_.Status(), &StatusLine::runClicked, this, [this] { TogglePanel(*this); });
  AddPanelEntry(*form_.findChild<QMenu*>("mnuView"), *this, "mnuViewRun", tr("&Run"), "F9");
  form_.installEventFilter(this);
  parts_->cmdStop->installEventFilter(this);
}

void RunPanel::Open() {
  if (!form_.isVisible() && !isFloating()) PutAside();
  setAttribute(Qt::WA_ShowWithoutActivating);
  show();
  setAttribute(Qt::WA_ShowWithoutActivating, false);
  raise();
}

/// At the lower edge of the screen: the list of demos is in its middle.
void RunPanel::PutAside() {
  isAside_ = true;
  setFloating(true);
  const QRect room = screen()->availableGeometry();
  const int line = fontMetrics().height();
  resize(QSize(fontMetrics().averageCharWidth() * 110, 14 * line).boundedTo(room.size()));
  move(room.center().x() - width() / 2, room.bottom() - height());
}

bool RunPanel::eventFilter(QObject* watched, QEvent* event) {
  // A double click asks the solver to stop; the second click would end it at once.
  if (watched == parts_->cmdStop && event->type() == QEvent::MouseButtonDblClick) return true;
  const bool isFormBack = watched == &form_ && event->type() == QEvent::Show;
  if (isFormBack && std::exchange(isAside_, false)) setFloating(false);
  return QDockWidget::eventFilter(watched, event);
}

/// A finding that is chosen by Enter leads to its place, not to the report.
void RunPanel::keyPressEvent(QKeyEvent* event) {
  const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (isEnter && parts_->cmdReport->isEnabled() && !parts_->findings->hasFocus()) {
    Q_EMIT reportWanted();
  } else if (event->key() == Qt::Key_Escape && isFloating()) {
    close();
  } else {
    QDockWidget::keyPressEvent(event);
  }
}

void RunPanel::ShowTitle() {
  const QString file = parts_->lblDataFile->text();
  setWindowTitle(isFloating() && !file.isEmpty() ? tr("%1 - Polefit Run").arg(file) : tr("Run"));
}

void RunPanel::ShowRun(const std::vector<Finding>& findings, bool isDemo) {
  if (!watch_.IsOn() || watch_.Run()->process == shown_) return;
  const RunRecord& run = *watch_.Run();
  shown_ = run.process;
  isLasting_ = false;
  isOutdated_ = false;
  since_.start();
  const Command command{run.words.front(), {run.words.begin() + 1, run.words.end()}};
  parts_->lblDataFile->setText(run.DataFile().empty() ? tr("No data file was chosen.")
                                                      : QString::fromStdString(run.DataFile()));
  // A long name leaves room for the rest; a short one leaves its own to the command.
  parts_->lblDataFile->setMaximumWidth(WidthOf(*parts_->lblDataFile, parts_->lblDataFile->text()));
  parts_->lblDataFile->setToolTip(parts_->lblDataFile->text());
  parts_->lblCommand->setText("> " + QString::fromStdString(CommandLine(command)));
  parts_->lblCommand->setToolTip(parts_->lblCommand->text());
  parts_->output->clear();
  parts_->output->setPlaceholderText({});
  parts_->errors->Clear();
  parts_->errors->hide();
  parts_->lblState->setText(tr("Running"));
  parts_->progress->setRange(0, 0);
  parts_->progress->show();
  for (QLabel* const label : {parts_->lblVerdict, parts_->lblEnding}) {
    label->clear();
    label->hide();
  }
  parts_->lblOutdated->hide();
  parts_->cmdStop->setText(run.stops > 0 ? tr("End at Once") : tr("Stop"));
  parts_->cmdStop->setEnabled(true);
  for (QPushButton* const button : {parts_->cmdReport, parts_->cmdImproved, parts_->cmdCopyAs}) {
    button->setEnabled(false);
  }
  ShowFindings(findings);
  ShowTitle();
  if (isDemo) Open();
  timer_.start();
  Poll();
}

void RunPanel::ShowFindings(const std::vector<Finding>& findings) {
  findings_ = findings;
  parts_->findings->clear();
  for (const Finding& finding : findings) AddFinding(*parts_->findings, finding);
  parts_->findings->setVisible(!findings.empty());
}

void RunPanel::GoTo(int index) {
  if (index < 0 || index >= static_cast<int>(findings_.size())) return;
  form_.ShowPlace(PlaceOnForm(findings_[static_cast<std::size_t>(index)].place));
}

void RunPanel::Poll() {
  ShowNews(watch_.Poll());
  ShowTime();
  if (watch_.End()) return ShowEnd(*watch_.End());
  if (!isLasting_ && (since_.elapsed() > kLastingMilliseconds || watch_.Seconds() > 1)) {
    ShowLasting();
  }
  ShowStatus();
}

void RunPanel::ShowLasting() {
  isLasting_ = true;
  parts_->errors->show();
  Open();
}

void RunPanel::ShowNews(const RunLog::News& news) {
  QStringList lines;
  if (news.isCut) lines << tr("[... output left out ...]");
  for (const std::string& line : news.lines) {
    if (ReadMachineLine(line)) continue;  // for programs
    lines << QString::fromStdString(line);
    const auto progress = ProgressOf(line);
    if (progress && progress->rms) parts_->errors->Add(progress->evaluations, *progress->rms);
  }
  if (!lines.isEmpty()) parts_->output->appendPlainText(lines.join('\n'));
  if (const auto progress = watch_.Progress()) {
    parts_->progress->setRange(0, progress->limit);
    parts_->progress->setValue(std::min(progress->evaluations, progress->limit));
  }
}

void RunPanel::ShowTime() {
  constexpr std::int64_t kMinute = 60;
  const std::int64_t seconds = watch_.Seconds();
  parts_->lblElapsed->setText(
      tr("Elapsed %1:%2").arg(seconds / kMinute).arg(seconds % kMinute, 2, 10, QChar('0')));
}

void RunPanel::Stop() {
  switch (watch_.Stop()) {
    case Stopping::asked:
      parts_->lblState->setText(tr("Stopping; the solver writes its best values"));
      parts_->cmdStop->setText(tr("End at Once"));
      break;
    case Stopping::endedAtOnce:
      parts_->lblState->setText(tr("Ending at once"));
      break;
    case Stopping::isNotOurs:
      parts_->lblState->setText(tr("This run was started by another user, who alone may stop it."));
      break;
    case Stopping::isOver:
      break;
  }
}

void RunPanel::ShowEnd(const RunEnd& end) {
  timer_.stop();
  parts_->lblState->setText(tr("Ended"));
  for (const auto& [label, text] :
       {std::pair(parts_->lblVerdict, end.verdict.text), {parts_->lblEnding, end.verdict.ending}}) {
    label->setText(QString::fromStdString(text));
    label->setVisible(!text.empty());
  }
  parts_->progress->hide();
  parts_->cmdStop->setText(tr("Stop"));
  parts_->cmdStop->setEnabled(false);
  parts_->cmdReport->setEnabled(end.hasReport);
  for (QPushButton* const button : {parts_->cmdImproved, parts_->cmdCopyAs}) {
    button->setEnabled(end.hasValues);
  }
  if (isLasting_ || end.verdict.outcome != Outcome::good) Open();
  ShowStatus();
  if (isLasting_) Announce(*parts_->lblVerdict);
  Q_EMIT runEnded(end.hasValues);
}

void RunPanel::SetOutdated(bool isOutdated) {
  isOutdated_ = isOutdated && watch_.End().has_value();
  parts_->lblOutdated->setVisible(isOutdated_);
  ShowStatus();
}

/// In the status bar and on the tab of runs, whether the panel is open or not.
void RunPanel::ShowStatus() {
  QStringList texts;
  if (watch_.End()) {
    texts = StatusTexts(*watch_.End(), isOutdated_);
  } else if (watch_.IsOn()) {
    const QString file = QString::fromStdString(watch_.Run()->DataFile());
    const auto progress = watch_.Progress();
    const QString evaluations = progress ? tr(": %1 of %2 evaluations")
                                               .arg(QString::number(progress->evaluations),
                                                    QString::number(progress->limit))
                                         : QString();
    texts = {tr("Running %1").arg(file) + evaluations, tr("Running") + evaluations, tr("Running")};
  } else {
    return;
  }
  form_.Status().ShowRun(texts);
  form_.findChild<QLabel*>("RunState")->setText(texts.first());
}

}  // namespace polefit

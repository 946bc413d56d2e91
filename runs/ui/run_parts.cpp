#include "runs/ui/run_parts.h"

#include <QFontDatabase>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QStyle>
#include <QVBoxLayout>

#include "runs/ui/error_plot.h"
#include "widgets/controls.h"
#include "widgets/cut_label.h"

namespace polefit {

namespace {

constexpr int kMostLines = 20000;

QLabel* MakeLabel(const char* name, bool isStrong = false) {
  auto* label = new QLabel;
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setWordWrap(true);
  QFont font = label->font();
  font.setBold(isStrong);
  label->setFont(font);
  return label;
}

QLabel* MakeCutLabel(const char* name, const QFont& font) {
  auto* label = new CutLabel;
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setFont(font);
  return label;
}

QFont Strong() {
  QFont font;
  font.setBold(true);
  return font;
}

QPlainTextEdit* MakeOutput() {
  auto* output = new QPlainTextEdit;
  output->setObjectName("txtOutput");
  output->setAccessibleName(QObject::tr("Output of the solver"));
  output->setReadOnly(true);
  output->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  output->setTabChangesFocus(true);
  output->setMaximumBlockCount(kMostLines);
  output->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  output->setPlaceholderText(
      QObject::tr("No run since the program was started. Tab 7 lists the runs so far."));
  return output;
}

QProgressBar* MakeProgress() {
  auto* progress = new QProgressBar;
  progress->setObjectName("progress");
  progress->setAccessibleName(QObject::tr("Evaluations used"));
  progress->setFormat(QObject::tr("%v of %m evaluations"));
  return progress;
}

QListWidget* MakeFindings() {
  auto* list = new QListWidget;
  list->setObjectName("lstRunFindings");
  list->setAccessibleName(QObject::tr("What stood out in the answers of this run"));
  list->setWordWrap(true);
  const int icon = list->style()->pixelMetric(QStyle::PM_SmallIconSize);
  list->setIconSize({icon, icon});
  return list;
}

}  // namespace

RunParts::RunParts()
    : content(new QWidget),
      lblDataFile(MakeCutLabel("lblDataFile", Strong())),
      lblCommand(MakeCutLabel("lblCommand", QFontDatabase::systemFont(QFontDatabase::FixedFont))),
      lblState(MakeLabel("lblState")),
      lblElapsed(MakeLabel("lblElapsed")),
      lblVerdict(MakeLabel("lblVerdict", true)),
      lblEnding(MakeLabel("lblEnding")),
      lblOutdated(MakeLabel("lblOutdated")),
      progress(MakeProgress()),
      output(MakeOutput()),
      findings(MakeFindings()),
      errors(new ErrorPlot),
      cmdStop(MakeButton("cmdStop", QObject::tr("Stop"))),
      cmdReport(MakeButton("cmdReport", QObject::tr("Show Report"))),
      cmdImproved(MakeButton("cmdImproved", QObject::tr("Take Improved Values"))),
      cmdCopyAs(MakeButton("cmdCopyAs", QObject::tr("Copy As"))),
      cmdClose(MakeButton("cmdClose", QObject::tr("Close"))) {
  lblOutdated->setText(QObject::tr("The form was changed since this run."));
  cmdReport->setToolTip(QObject::tr("Opens the report of this run (Enter)"));
  cmdImproved->setToolTip(QObject::tr("Puts the locations that were found onto the form"));
  cmdCopyAs->setToolTip(QObject::tr("Copies the result for another program"));
  MakeAlert(*lblVerdict);
  for (QLabel* const label : {lblVerdict, lblEnding, lblOutdated}) label->hide();
  for (QPushButton* const button : {cmdStop, cmdReport, cmdImproved, cmdCopyAs}) {
    button->setEnabled(false);
  }
  for (QWidget* const later : std::initializer_list<QWidget*>{progress, findings, errors}) {
    later->hide();
  }
  LayOut();
}

void RunParts::LayOut() const {
  auto* head = new QHBoxLayout;
  for (QLabel* const label : {lblState, lblElapsed}) label->setWordWrap(false);
  head->setSpacing(content->fontMetrics().averageCharWidth());
  head->addWidget(lblDataFile, 8);
  head->addWidget(lblCommand, 1);
  head->addWidget(lblState);
  head->addWidget(lblElapsed);
  auto* parts = new QSplitter(Qt::Horizontal);
  parts->setChildrenCollapsible(false);
  for (QWidget* const part : std::initializer_list<QWidget*>{output, findings, errors}) {
    parts->addWidget(part);
  }
  for (const int index : {0, 1, 2}) parts->setStretchFactor(index, 1);
  // In a low window the panel scrolls rather than cuts the verdict.
  auto* room = new QScrollArea;
  room->setWidgetResizable(true);
  room->setFrameShape(QFrame::NoFrame);
  room->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  room->setWidget(new QWidget);
  auto* rows = new QVBoxLayout(room->widget());
  rows->setContentsMargins({});
  rows->addLayout(head);
  for (QWidget* const row :
       std::initializer_list<QWidget*>{lblVerdict, lblEnding, lblOutdated, progress}) {
    rows->addWidget(row);
  }
  rows->addWidget(parts, 1);
  auto* buttons = new QVBoxLayout;
  for (QPushButton* const button : {cmdStop, cmdReport, cmdImproved, cmdCopyAs, cmdClose}) {
    button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    buttons->addWidget(button);
  }
  buttons->addStretch();
  auto* columns = new QHBoxLayout(content);
  columns->addWidget(room, 1);
  columns->addLayout(buttons);
  errors->setMinimumWidth(30 * errors->fontMetrics().averageCharWidth());
  parts->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
  parts->setMinimumHeight(4 * output->fontMetrics().lineSpacing());
}

}  // namespace polefit

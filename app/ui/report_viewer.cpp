#include "app/ui/report_viewer.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QShortcut>
#include <QTextBlock>
#include <QVBoxLayout>
#include <memory>
#include <utility>

#include "base/text.h"
#include "platform/ui/plain_viewer.h"
#include "widgets/controls.h"
#include "widgets/window_size.h"

namespace polefit {

namespace {

constexpr int kColumns = 84;
constexpr int kSectionLetters = 24;
constexpr int kLines = 40;
/// Points; 79 columns then fit on an upright page.
constexpr int kPrintedSize = 9;

/// A heading has a line of dashes below it.
bool IsHeading(const QTextBlock& block) {
  const QString below = block.next().text();
  return !block.text().trimmed().isEmpty() && below.size() > 2 && below.count('-') == below.size();
}

}  // namespace

ReportViewer::ReportViewer(Report report, Saver save)
    : report_(std::move(report)),
      save_(std::move(save)),
      text_(MakeTextPage(ToQString(FromWindows1252(report_.bytes)), tr("Text of the report"))),
      outdated_(MakeNote("lblReportOutdated", tr("The form was changed since this run."))),
      sections_(new QComboBox),
      find_(new QLineEdit),
      found_(new QLabel) {
  setObjectName("reportViewer");
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(tr("Report of %1").arg(ToQString(report_.file)));
  auto* rows = new QVBoxLayout(this);
  BuildBar(rows);
  rows->addWidget(outdated_);
  outdated_->hide();
  rows->addWidget(text_, 1);
  FillSections();
  AddKeys();
  const QFontMetrics metrics(text_->font());
  ResizeOnScreen(*this, {metrics.horizontalAdvance(QString(kColumns, '0')) + 3 * metrics.height(),
                         kLines * metrics.lineSpacing()});
  text_->setFocus();
}

void ReportViewer::SetOutdated(bool isOutdated) {
  outdated_->setVisible(isOutdated);
}

void ReportViewer::BuildBar(QBoxLayout* rows) {
  sections_->setObjectName("reportSections");
  sections_->setAccessibleName(tr("Section"));
  sections_->setToolTip(tr("Goes to a section"));
  sections_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  sections_->setMinimumContentsLength(kSectionLetters);
  find_->setObjectName("reportFind");
  find_->setPlaceholderText(tr("Find (Ctrl+F)"));
  find_->setAccessibleName(tr("Find"));
  find_->setClearButtonEnabled(true);
  found_->setObjectName("lblReportFound");
  auto* bar = new QHBoxLayout;
  bar->addWidget(sections_);
  bar->addWidget(find_, 1);
  bar->addWidget(found_);
  QPushButton* print = MakeButton("cmdReportPrint", tr("Print ..."));
  QPushButton* save = MakeButton("cmdReportSave", tr("Save a Copy ..."));
  connect(print, &QPushButton::clicked, this, &ReportViewer::Print);
  connect(save, &QPushButton::clicked, this, [this] { save_(report_); });
  for (QPushButton* const button : {print, save}) bar->addWidget(button);
  rows->addLayout(bar);
  connect(find_, &QLineEdit::returnPressed, this, [this] { Find(false); });
  connect(find_, &QLineEdit::textEdited, this, &ReportViewer::FindTyped);
  connect(sections_, &QComboBox::activated, this, [this](int index) {
    const QTextBlock block =
        text_->document()->findBlockByNumber(sections_->itemData(index).toInt());
    // From the end upwards the heading comes to the top of the page.
    text_->moveCursor(QTextCursor::End);
    text_->setTextCursor(QTextCursor(block));
    text_->setFocus();
  });
}

void ReportViewer::FillSections() {
  sections_->addItem(tr("Top"), 0);
  for (QTextBlock block = text_->document()->begin(); block.isValid(); block = block.next()) {
    if (IsHeading(block)) sections_->addItem(block.text().trimmed(), block.blockNumber());
  }
}

void ReportViewer::AddKeys() {
  const auto add = [this](const QKeySequence& key, const auto& action) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, action);
  };
  add(QKeySequence::Find, [this] {
    find_->setFocus();
    find_->selectAll();
  });
  add(QKeySequence(Qt::Key_F3), [this] { Find(false); });
  add(QKeySequence(Qt::SHIFT | Qt::Key_F3), [this] { Find(true); });
  add(QKeySequence(Qt::CTRL | Qt::Key_Plus), [this] { Zoom(1); });
  add(QKeySequence(Qt::CTRL | Qt::Key_Equal), [this] { Zoom(1); });
  add(QKeySequence(Qt::CTRL | Qt::Key_Minus), [this] { Zoom(-1); });
  add(QKeySequence(Qt::CTRL | Qt::Key_0), [this] { Zoom(0); });
  add(QKeySequence::Print, [this] { Print(); });
  add(QKeySequence::Save, [this] { save_(report_); });
  add(QKeySequence::Close, [this] { close(); });
  add(QKeySequence(Qt::Key_Escape), [this] {
    if (find_->hasFocus()) return text_->setFocus();
    close();
  });
}

/// The found place may go on with the next letter, so it is looked at again.
void ReportViewer::FindTyped() {
  QTextCursor start = text_->textCursor();
  start.setPosition(start.selectionStart());
  text_->setTextCursor(start);
  found_->clear();
  Find(false);
}

/// Round again at the end.
void ReportViewer::Find(bool isBackward) {
  if (find_->text().isEmpty()) return;
  const QTextDocument::FindFlags flags =
      isBackward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
  bool isFound = text_->find(find_->text(), flags);
  if (!isFound) {
    const QTextCursor before = text_->textCursor();
    text_->moveCursor(isBackward ? QTextCursor::End : QTextCursor::Start);
    isFound = text_->find(find_->text(), flags);
    if (!isFound) text_->setTextCursor(before);
  }
  found_->setText(isFound ? QString() : tr("Not found"));
}

void ReportViewer::Zoom(int steps) {
  if (steps == 0) {
    text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  } else {
    text_->zoomIn(steps);
  }
}

void ReportViewer::Print() {
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(windowTitle());
  QPrintDialog dialog(&printer, this);
  if (dialog.exec() != QDialog::Accepted) return;
  const std::unique_ptr<QTextDocument> page(text_->document()->clone());
  QFont font = text_->font();
  font.setPointSize(kPrintedSize);
  page->setDefaultFont(font);
  page->print(&printer);
}

}  // namespace polefit

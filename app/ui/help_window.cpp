#include "app/ui/help_window.h"

#include <QAbstractTextDocumentLayout>
#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextTable>
#include <QToolButton>
#include <QTreeWidget>

#include "widgets/window_size.h"

namespace polefit {

namespace {

/// The source of manual.rtf, with its pictures beside it.
constexpr const char* kFolder = "qrc:/help/docs/";
constexpr int kWidestPicture = 540;

/// The name by which links know a heading.
QString LinkName(const QString& heading) {
  static const QRegularExpression kNeither("[^\\w\\- ]",
                                           QRegularExpression::UseUnicodePropertiesOption);
  return heading.toLower().remove(kNeither).replace(' ', '-');
}

}  // namespace

HelpWindow::HelpWindow(QWidget* parent)
    : QWidget(parent, Qt::Window),
      contents_(new QTreeWidget),
      page_(new QTextBrowser),
      wanted_(new QLineEdit),
      outcome_(new QLabel) {
  setObjectName("frmHelp");
  setWindowTitle(tr("Polefit Manual"));
  contents_->setObjectName("helpContents");
  contents_->setAccessibleName(tr("Contents"));
  contents_->setHeaderHidden(true);
  page_->setObjectName("helpPage");
  page_->setAccessibleName(tr("Manual"));
  page_->setOpenLinks(false);
  LoadManual();
  FitPictures();
  SpaceOut();
  ListHeadings();
  auto* parts = new QSplitter;
  parts->addWidget(contents_);
  parts->addWidget(page_);
  parts->setStretchFactor(1, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(MakeBar());
  layout->addWidget(parts, 1);
  const int unit = fontMetrics().height();
  parts->setSizes({16 * unit, 44 * unit});
  ResizeOnScreen(*this, {60 * unit, 42 * unit});

  connect(contents_, &QTreeWidget::itemClicked, this,
          [this](const QTreeWidgetItem* item) { GoTo(item->data(0, Qt::UserRole).toInt()); });
  connect(contents_, &QTreeWidget::itemActivated, this,
          [this](const QTreeWidgetItem* item) { GoTo(item->data(0, Qt::UserRole).toInt()); });
  connect(page_, &QTextBrowser::anchorClicked, this,
          [this](const QUrl& link) { FollowLink(link.fragment()); });
  connect(page_->verticalScrollBar(), &QScrollBar::valueChanged, this, &HelpWindow::MarkContents);
}

void HelpWindow::LoadManual() {
  const QUrl source(QString(kFolder) + "manual.md");
  QString text =
      QString::fromUtf8(page_->loadResource(QTextDocument::MarkdownResource, source).toByteArray());
  text.replace("{{version}}", POLEFIT_VERSION).remove("[TOC]\n");
  page_->document()->setBaseUrl(QUrl(kFolder));
  page_->document()->setDocumentMargin(fontMetrics().height());
  page_->setMarkdown(text);
}

void HelpWindow::FitPictures() {
  QTextCursor cursor(page_->document());
  for (QTextBlock block = page_->document()->begin(); block.isValid(); block = block.next()) {
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      QTextImageFormat picture = part.fragment().charFormat().toImageFormat();
      if (!picture.isValid()) continue;
      const QUrl url = QUrl(kFolder).resolved(QUrl(picture.name()));
      const QImage image(":" + url.path());
      if (image.width() <= kWidestPicture) continue;
      picture.setWidth(kWidestPicture);
      cursor.setPosition(part.fragment().position());
      cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
      cursor.setCharFormat(picture);
      break;  // the change has made the fragments anew; a picture stands alone
    }
  }
}

/// Markdown has no say in distances.
void HelpWindow::SpaceOut() {
  const int line = fontMetrics().height();
  for (QTextBlock block = page_->document()->begin(); block.isValid(); block = block.next()) {
    QTextBlockFormat format = block.blockFormat();
    if (format.headingLevel() == 0) continue;
    format.setTopMargin(1.2 * line);
    format.setBottomMargin(0.4 * line);
    QTextCursor(block).setBlockFormat(format);
  }
  for (QTextFrame* const frame : page_->document()->rootFrame()->childFrames()) {
    auto* table = qobject_cast<QTextTable*>(frame);
    if (table == nullptr) continue;
    QTextTableFormat format = table->format();
    format.setCellPadding(0.25 * line);
    format.setCellSpacing(0);
    format.setBorderCollapse(true);
    format.setBottomMargin(0.6 * line);
    table->setFormat(format);
  }
}

void HelpWindow::ListHeadings() {
  constexpr int kChapter = 2;
  QTreeWidgetItem* chapter = nullptr;
  for (QTextBlock block = page_->document()->begin(); block.isValid(); block = block.next()) {
    const int level = block.blockFormat().headingLevel();
    if (level < kChapter) continue;
    auto* item = new QTreeWidgetItem({block.text()});
    item->setData(0, Qt::UserRole, block.position());
    if (level == kChapter || chapter == nullptr) {
      contents_->addTopLevelItem(item);
      chapter = item;
    } else {
      chapter->addChild(item);
    }
    headings_.push_back({block.text(), level, block.position(), item});
  }
}

QWidget* HelpWindow::MakeBar() {
  auto* bar = new QWidget;
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const QString& caption, const char* name, const QKeySequence& key,
                       const QString& tip, const auto& chosen) {
    auto* action = new QAction(caption, this);
    action->setObjectName(name);
    action->setShortcut(key);
    action->setToolTip(tip + " (" + key.toString(QKeySequence::NativeText) + ")");
    connect(action, &QAction::triggered, this, chosen);
    addAction(action);
    auto* button = new QToolButton;
    button->setDefaultAction(action);
    button->setAccessibleName(tip);
    row->addWidget(button);
  };
  auto* label = new QLabel(tr("&Find:"));
  label->setBuddy(wanted_);
  wanted_->setObjectName("helpFind");
  wanted_->setClearButtonEnabled(true);
  outcome_->setObjectName("helpOutcome");
  row->addWidget(label);
  row->addWidget(wanted_, 1);
  add(tr("Next"), "helpNext", QKeySequence("F3"), tr("Find the next place"),
      [this] { Find(false); });
  add(tr("Previous"), "helpPrevious", QKeySequence("Shift+F3"), tr("Find the place before"),
      [this] { Find(true); });
  row->addWidget(outcome_, 1);
  add("−", "helpSmaller", QKeySequence::ZoomOut, tr("Smaller text"), [this] { page_->zoomOut(); });
  add("+", "helpLarger", QKeySequence::ZoomIn, tr("Larger text"), [this] { page_->zoomIn(); });
  connect(wanted_, &QLineEdit::returnPressed, this, [this] { Find(false); });
  const auto onKey = [this](const QKeySequence& key, const auto& chosen) {
    auto* action = new QAction(this);
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, chosen);
    addAction(action);
  };
  onKey(QKeySequence::Find, [this] {
    wanted_->setFocus();
    wanted_->selectAll();
  });
  onKey(QKeySequence(Qt::Key_Escape), [this] { close(); });
  return bar;
}

QStringList HelpWindow::Headings() const {
  QStringList texts;
  for (const Heading& heading : headings_) texts.append(heading.text);
  return texts;
}

void HelpWindow::ShowChapter(const QString& heading) {
  int position = 0;
  for (const Heading& each : headings_) {
    if (each.text == heading) position = each.position;
  }
  show();
  raise();
  activateWindow();
  GoTo(position);
  page_->setFocus();
}

void HelpWindow::GoTo(int position) {
  const QTextBlock block = page_->document()->findBlock(position);
  page_->setTextCursor(QTextCursor(block));
  const QRectF place = page_->document()->documentLayout()->blockBoundingRect(block);
  page_->verticalScrollBar()->setValue(static_cast<int>(place.top()));
  MarkContents();
}

QString HelpWindow::HeadingAtTop() const {
  const int top = page_->cursorForPosition({0, 2}).position();
  QString text;
  for (const Heading& heading : headings_) {
    if (heading.position <= top) text = heading.text;
  }
  return text;
}

void HelpWindow::MarkContents() {
  const QString text = HeadingAtTop();
  for (const Heading& heading : headings_) {
    if (heading.text == text) contents_->setCurrentItem(heading.item);
  }
}

void HelpWindow::Find(bool backward) {
  const QString text = wanted_->text();
  outcome_->clear();
  if (text.isEmpty()) return;
  const QTextDocument::FindFlags way =
      backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
  if (page_->find(text, way)) return;
  // Once round.
  const QTextCursor former = page_->textCursor();
  page_->moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
  if (page_->find(text, way)) return;
  page_->setTextCursor(former);
  outcome_->setText(tr("'%1' does not occur").arg(text));
}

void HelpWindow::FollowLink(const QString& target) {
  for (const Heading& heading : headings_) {
    if (LinkName(heading.text) != target) continue;
    GoTo(heading.position);
    return;
  }
}

}  // namespace polefit

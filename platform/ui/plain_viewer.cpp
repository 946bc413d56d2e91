#include "platform/ui/plain_viewer.h"

#include <QFileInfo>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QVBoxLayout>

#include "base/rich_text.h"
#include "base/text.h"

namespace polefit {

namespace {

QString TextOf(const std::string& bytes) {
  const bool isRich = bytes.starts_with("{\\rtf");
  return QString::fromStdString(isRich ? PlainTextOfRtf(bytes) : FromWindows1252(bytes));
}

QPlainTextEdit* MakePage(const QString& text, bool wraps) {
  auto* page = new QPlainTextEdit(text);
  page->setObjectName("viewerText");
  page->setAccessibleName(QObject::tr("Text of the file"));
  page->setReadOnly(true);
  page->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  page->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  page->document()->setDocumentMargin(page->fontMetrics().height());
  page->setLineWrapMode(wraps ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
  return page;
}

}  // namespace

void ShowPlainViewer(const std::string& path, const std::string& bytes) {
  const QString text = TextOf(bytes);
  auto* window = new QWidget;
  window->setObjectName("plainViewer");
  window->setAttribute(Qt::WA_DeleteOnClose);
  window->setWindowTitle(QFileInfo(QString::fromStdString(path)).fileName());
  QPlainTextEdit* const page = MakePage(text, path.ends_with(".rtf"));
  auto* layout = new QVBoxLayout(window);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(page);
  for (const QKeySequence& key :
       {QKeySequence(QKeySequence::Close), QKeySequence(Qt::Key_Escape)}) {
    QObject::connect(new QShortcut(key, window), &QShortcut::activated, window, &QWidget::close);
  }
  constexpr int kColumns = 88;
  constexpr int kLines = 40;
  const QFontMetrics metrics(page->font());
  window->resize(metrics.horizontalAdvance(QString(kColumns, '0')), kLines * metrics.lineSpacing());
  window->show();
}

}  // namespace polefit

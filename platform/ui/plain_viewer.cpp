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

}  // namespace

QPlainTextEdit* MakeTextPage(const QString& text, const QString& name) {
  auto* page = new QPlainTextEdit(text);
  page->setObjectName("viewerText");
  page->setAccessibleName(name);
  page->setReadOnly(true);
  page->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  page->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  page->document()->setDocumentMargin(page->fontMetrics().height());
  page->setLineWrapMode(QPlainTextEdit::NoWrap);
  return page;
}

void ShowPlainViewer(const std::string& path, const std::string& bytes) {
  const QString text = TextOf(bytes);
  auto* window = new QWidget;
  window->setObjectName("plainViewer");
  window->setAttribute(Qt::WA_DeleteOnClose);
  window->setWindowTitle(QFileInfo(QString::fromStdString(path)).fileName());
  QPlainTextEdit* const page = MakeTextPage(text, QObject::tr("Text of the file"));
  if (path.ends_with(".rtf")) page->setLineWrapMode(QPlainTextEdit::WidgetWidth);
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

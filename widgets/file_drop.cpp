#include "widgets/file_drop.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>
#include <utility>

namespace polefit {

namespace {

QStringList LocalFiles(const QMimeData& data) {
  QStringList files;
  for (const QUrl& url : data.urls()) {
    if (url.isLocalFile()) files << url.toLocalFile();
  }
  return files;
}

}  // namespace

FileDrop::FileDrop(QWidget& window, Take take) : QObject(&window), take_(std::move(take)) {
  window.setAcceptDrops(true);
  window.installEventFilter(this);
  for (QWidget* const part : window.findChildren<QWidget*>()) {
    if (part->acceptDrops()) part->installEventFilter(this);
  }
}

bool FileDrop::eventFilter(QObject* watched, QEvent* event) {
  const bool isDrop = event->type() == QEvent::Drop;
  const bool isDrag = event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove;
  if (!isDrop && !isDrag) return QObject::eventFilter(watched, event);
  auto* drop = static_cast<QDropEvent*>(event);
  const QStringList files = LocalFiles(*drop->mimeData());
  if (files.isEmpty()) return false;
  drop->acceptProposedAction();
  // The program that the drag came from waits for this to end.
  if (isDrop) {
    QMetaObject::invokeMethod(
        this, [this, files] { take_(files); }, Qt::QueuedConnection);
  }
  return true;
}

}  // namespace polefit

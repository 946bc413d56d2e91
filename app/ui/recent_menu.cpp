#include "app/ui/recent_menu.h"

#include "app/recent_files.h"

namespace polefit {

namespace {

/// "&1  /folder/name", cut in the middle; the tenth is "1&0".
QString CaptionOf(int number, const QString& path, const QFontMetrics& metrics) {
  constexpr int kCharacters = 60;
  const QString key = number < 10 ? "&" + QString::number(number) : QString("1&0");
  QString shown = metrics.elidedText(path.simplified(), Qt::ElideMiddle,
                                     kCharacters * metrics.averageCharWidth());
  return key + "  " + shown.replace('&', "&&");
}

}  // namespace

RecentMenu::RecentMenu(Host& host, QWidget* parent)
    : QMenu(tr("Open Re&cent"), parent), host_(host) {
  setObjectName("mnuFileRecent");
  setIcon(QIcon::fromTheme("document-open-recent"));
  connect(this, &QMenu::aboutToShow, this, &RecentMenu::Fill);
}

void RecentMenu::Fill() {
  clear();
  int number = 0;
  for (const RecentFile& file : RecentFiles(host_)) {
    const QString path = QString::fromStdString(file.path);
    QAction* const entry = addAction(CaptionOf(++number, path, fontMetrics()));
    entry->setEnabled(file.isThere);
    connect(entry, &QAction::triggered, this, [this, path] { Q_EMIT chosen(path); });
  }
  if (number == 0) addAction(tr("No files yet"))->setEnabled(false);
}

}  // namespace polefit

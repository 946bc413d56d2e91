#include "check/ui/finding_item.h"

#include <QListWidget>
#include <QStyle>

namespace polefit {

namespace {

QStyle::StandardPixmap IconOf(Severity severity) {
  switch (severity) {
    case Severity::fault:
      return QStyle::SP_MessageBoxCritical;
    case Severity::warning:
      return QStyle::SP_MessageBoxWarning;
    case Severity::open:
      break;
  }
  return QStyle::SP_MessageBoxInformation;
}

QString KindOf(Severity severity) {
  switch (severity) {
    case Severity::fault:
      return QObject::tr("Fault");
    case Severity::warning:
      return QObject::tr("Warning");
    case Severity::open:
      break;
  }
  return QObject::tr("Open");
}

}  // namespace

void AddFinding(QListWidget& list, const Finding& finding) {
  auto* item = new QListWidgetItem(list.style()->standardIcon(IconOf(finding.severity)),
                                   QString::fromStdString(finding.text), &list);
  item->setData(Qt::AccessibleTextRole, KindOf(finding.severity) + ": " + item->text());
}

}  // namespace polefit

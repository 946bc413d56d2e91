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

}  // namespace

QIcon FindingIcon(const QStyle& style, Severity severity) {
  return style.standardIcon(IconOf(severity));
}

QString SpokenFinding(const Finding& finding) {
  const QString text = QString::fromStdString(finding.text);
  switch (finding.severity) {
    case Severity::fault:
      return QObject::tr("Fault: %1").arg(text);
    case Severity::warning:
      return QObject::tr("Warning: %1").arg(text);
    case Severity::open:
      break;
  }
  return QObject::tr("Open: %1").arg(text);
}

void AddFinding(QListWidget& list, const Finding& finding) {
  auto* item = new QListWidgetItem(FindingIcon(*list.style(), finding.severity),
                                   QString::fromStdString(finding.text), &list);
  item->setData(Qt::AccessibleTextRole, SpokenFinding(finding));
}

}  // namespace polefit

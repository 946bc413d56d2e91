#include "exchange/ui/copy_as.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>

#include "widgets/controls.h"

namespace polefit {

void AddExportFormats(QMenu& menu, const std::function<void(const ExportFormatName&)>& chosen) {
  for (const ExportFormatName& format : kExportFormats) {
    QAction* action = menu.addAction(ToQString(format.description));
    action->setObjectName("copyAs-" + ToQString(format.word));
    QObject::connect(action, &QAction::triggered, &menu, [chosen, &format] { chosen(format); });
  }
}

std::vector<std::string> CopyAs(const ResponseRecord& record, const ExportRequest& request) {
  const Export exported = ExportResult(record, request);
  if (exported.faults.empty()) {
    QGuiApplication::clipboard()->setText(ToQString(exported.text));
  }
  return exported.faults;
}

}  // namespace polefit

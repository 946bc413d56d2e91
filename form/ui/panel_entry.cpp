#include "form/ui/panel_entry.h"

#include <QDockWidget>
#include <QMenu>

namespace polefit {

void TogglePanel(QDockWidget& panel) {
  // Behind another one in the same place it is not seen, but not hidden either.
  const bool isSeen = panel.isVisible() && !panel.visibleRegion().isEmpty();
  panel.setVisible(!isSeen);
  if (!isSeen) panel.raise();
}

void AddPanelEntry(QMenu& menu, QDockWidget& panel, const char* name, const QString& caption,
                   const char* key) {
  QAction* entry = menu.addAction(caption);
  entry->setObjectName(name);
  entry->setShortcut(QKeySequence(key));
  entry->setCheckable(true);
  QObject::connect(entry, &QAction::triggered, &panel, [&panel] { TogglePanel(panel); });
  QObject::connect(&panel, &QDockWidget::visibilityChanged, entry, &QAction::setChecked);
}

}  // namespace polefit

#pragma once

#include <QString>

class QDockWidget;
class QMenu;

namespace polefit {

/// Hides a panel that is seen; else shows it, in front of those in the same place. The focus stays.
void TogglePanel(QDockWidget& panel);

/// Adds the menu entry that does so, with a mark while the panel is seen.
void AddPanelEntry(QMenu& menu, QDockWidget& panel, const char* name, const QString& caption,
                   const char* key);

}  // namespace polefit

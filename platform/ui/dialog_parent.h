#pragma once

class QWidget;

namespace polefit {

/// The window over which a dialog comes up: the active one or, where none is (between two dialogs,
/// or with another program in front), the main window when it is shown. Null when there is neither.
QWidget* DialogParent();

}  // namespace polefit

#pragma once

#include <Qt>

namespace polefit {

/// Whether the focus goes from control to control. A menu that opens or a window that comes to the
/// front takes it only for a while, and the controls take no notice.
inline bool FocusMovesInProgram(Qt::FocusReason reason) {
  return reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason &&
         reason != Qt::ActiveWindowFocusReason;
}

}  // namespace polefit

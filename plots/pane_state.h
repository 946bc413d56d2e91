#pragma once

#include <string>

namespace polefit {

/// What the pane's curves belong to.
enum class PaneState {
  nothing,   ///< no curve could ever be drawn
  noPoints,  ///< poles, zeros and H alone
  typed,
  preview,
  result,
  resultChanged,  ///< the form has been changed since the run
  lastGood        ///< the answers have a fault now
};

/// The state in the words of the pane; `time` is that of the result's run.
std::string StateText(PaneState state, const std::string& time);

/// Which diagrams a pane of this height has room for.
enum class PaneRoom { upperAlone, upperOrLower, all };
PaneRoom RoomOf(int height);

}  // namespace polefit

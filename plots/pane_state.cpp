#include "plots/pane_state.h"

namespace polefit {

std::string StateText(PaneState state, const std::string& time) {
  switch (state) {
    case PaneState::nothing:
      return "no curve yet; see findings";
    case PaneState::noPoints:
      return "typed values, no points yet: H alone";
    case PaneState::typed:
      return "typed values";
    case PaneState::preview:
      return "preview";
    case PaneState::result:
      return "result " + time;
    case PaneState::resultChanged:
      return "result " + time + ", form changed since";
    default:
      return "last good curve; see findings";
  }
}

PaneRoom RoomOf(int height) {
  constexpr int kAll = 520;
  constexpr int kTwo = 340;
  return height >= kAll   ? PaneRoom::all
         : height >= kTwo ? PaneRoom::upperOrLower
                          : PaneRoom::upperAlone;
}

}  // namespace polefit

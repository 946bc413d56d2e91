#pragma once

#include "plots/diagram.h"

namespace polefit {

class Host;

/// What is remembered of the pane from one start to the next.
struct KeptChoices {
  bool isLinear = false;
  bool isLogFrequency = false;
  bool showsPlainMagnitude = false;
  /// The lower diagram, or -1 while the user has chosen none.
  int lower = -1;
  bool isShown = true;
  /// In pixels; 0 before it was ever shown.
  int width = 0;
  bool isLeft = false;  ///< left of the tabs, not right
  bool isFloating = false;
  bool prefersLower = false;  ///< of the upper and the lower diagram where there is room for one

  bool operator==(const KeptChoices&) const = default;
};

/// What was kept last; what cannot be read is as at the first start.
KeptChoices ReadChoices(Host& host);
/// Writes only what differs from what is kept.
void KeepChoices(Host& host, const KeptChoices& choices);

}  // namespace polefit

#pragma once

#include "solver/model/model.h"
#include "solver/problem/options.h"
#include "solver/search/listener.h"

namespace polefit {

/// A sidelobe peak.
struct Peak {
  double frequency = 0;  ///< normalised
  double level = 0;      ///< ln|H / gain|
  bool isEnd = false;    ///< the end of the search range, where |H| still rises
};

/// A range of frequencies to search.
struct Gap {
  double from = 0;  ///< an omega-axis zero
  double to = 0;    ///< the next one, or the end of the range
  bool isLast = false;
};

/// WREN, the innermost solver: the highest sidelobe in one gap between omega-axis zeros.
///
/// Every sampled frequency that stands above its neighbours is refined by Newton's method on
/// d ln|H|/dw inside a sign bracket; the highest peak is kept.
Peak FindPeak(const LogCurve& curve, const Gap& gap, const Options& options, Listener& listener);

}  // namespace polefit

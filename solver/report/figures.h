#pragma once

#include <optional>
#include <vector>

#include "solver/model/transfer_function.h"
#include "solver/problem/problem.h"
#include "solver/report/deviations.h"
#include "solver/report/locations.h"
#include "solver/search/search.h"

namespace polefit {

/// The largest size of some errors, and the point it belongs to.
struct Extreme {
  double size = 0;
  double frequency = 0;  ///< MHz
  int row = 0;           ///< from 1; 0 when there is none

  void Take(double value, double at, int of);
};

/// How the answer follows the passband points.
struct PassbandFigures : PassbandFit {
  double rms = 0;   ///< of `error`
  Extreme largest;  ///< of `error`
  Extreme largestWeighted;
  Extreme largestDecibels;
  /// What tells a poor fit, of rows with weight: `error` in parts of the largest Yout, and
  /// `decibels`; the latter below Ipower 1, which leaves the skirts alone, only where Yout is at
  /// least a tenth of the largest.
  Extreme telling;
  Extreme tellingDecibels;
};

/// How the total delay follows its constant; ns.
struct DelayFigures : DelayFit {
  double constant = 0;  ///< T0
  double peakToPeak = 0;
  double rms = 0;
  double largest = 0;
};

/// The highest |H| above an omega-axis zero.
struct Sidelobe {
  double zero = 0;      ///< normalised
  double peak = 0;      ///< where, normalised
  double decibels = 0;  ///< against H(0); minus infinity where two zeros coincide
  bool isEnd = false;   ///< the end of the range, where |H| still rises
};

/// The errors of an answer at the passband points, and the largest of them.
PassbandFigures JudgePassband(const Problem& problem, const Iterate& iterate);

/// What a solved problem comes to, in numbers: for the report and for other programs alike.
struct Figures {
  double cost = 0;
  double rms = 0;  ///< of the weighted passband errors, in parts of the largest Yout
  int evaluations = 0;
  /// What the rounding of the typed points alone brings to F.
  double roundingCost = 0;
  int agreeing = 0;  ///< independent starts that ended at the answer
  int starts = 0;
  int witnesses = 0;  ///< independent starts that converged
  /// The expected share of independent starts that would end at optima not seen yet.
  double unseen = 1;
  /// The F of all optima seen, the lowest first.
  std::vector<double> optima;
  int bounds = 0;  ///< parts of locations that stand on a bound or are held
  int poles = 0;   ///< the order of H(s)
  int zeros = 0;
  double inputPower = 0;
  double freqNorm = 0;  ///< MHz
  double gain = 0;      ///< H(0)
  double constant = 0;  ///< K of H = K prod(s - z) / prod(s - p)
  std::vector<LocationFigures> locations;
  int freedom = 0;  ///< rows with weight less the fitted numbers
  ErrorPattern errors = ErrorPattern::unknown;
  PassbandFigures passband;
  std::optional<DelayFigures> delay;
  std::vector<Sidelobe> sidelobes;
};

/// The figures of a run that has found an answer.
Figures FiguresOf(const Problem& problem, const Summary& summary);

}  // namespace polefit

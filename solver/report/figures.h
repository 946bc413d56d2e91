#pragma once

#include <vector>

#include "solver/model/transfer_function.h"
#include "solver/problem/problem.h"
#include "solver/search/search.h"

namespace polefit {

/// The largest size of some errors, and the point it belongs to.
struct Extreme {
  double size = 0;
  double frequency = 0;  ///< MHz
  int row = 0;           ///< from 1; 0 when there is none

  void Take(double value, double at, int of);
};

/// H(s) of a point that a run has found.
TransferFunction AtBest(const Problem& problem, const Point& point);

/// How the answer follows the passband points.
struct PassbandFigures : PassbandFit {
  double rms = 0;   ///< of `error`
  Extreme largest;  ///< of `error`
  Extreme largestWeighted;
  Extreme largestDecibels;
};

PassbandFigures JudgePassband(const Problem& problem, const Point& point);

/// Whether an omega-axis zero has come so near to the largest location that there is no room for
/// the equalised ones, which stand above it and keep it from the bound itself.
bool IsAtRangeEnd(const Problem& problem, double zero);

/// What a solved problem comes to, in numbers: for the report and for other programs alike.
struct Figures {
  double cost = 0;
  double rms = 0;  ///< of the weighted passband errors, in parts of the largest Yout
  int evaluations = 0;
  int agreeing = 0;
  int starts = 0;
  int bounds = 0;  ///< locations on a bound or held
  PassbandFigures passband;
};

Figures FiguresOf(const Problem& problem, const Summary& summary);

}  // namespace polefit

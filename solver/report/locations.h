#pragma once

#include <limits>
#include <string>
#include <vector>

#include "solver/model/constellation.h"
#include "solver/problem/problem.h"
#include "solver/search/evaluator.h"

namespace polefit {

/// What keeps a part of a location where it is.
enum class Bound {
  none,
  lower,
  upper,
  held,     ///< an omega-axis zero that was typed as 1
  rangeEnd  ///< an omega-axis zero whose equalised neighbours have no room left
};

/// The real or the imaginary part of a location; magnitudes, normalised.
struct LocationPart {
  int parameter = -1;  ///< -1: the part is 0 by its kind
  double value = 0;
  Bound bound = Bound::none;
  /// One standard deviation; NaN where the points do not determine it.
  double deviation = std::numeric_limits<double>::quiet_NaN();
};

/// On which side of the omega axis a location lies.
enum class Side { left, right, both };

/// One pole or zero of the answer, as it is told.
struct LocationFigures {
  std::size_t factor = 0;
  FactorKind kind = FactorKind::sigmaPole;
  bool isDoublet = false;
  bool isLossless = false;
  /// The pole that a lossless zero brings along.
  bool isOwnPole = false;
  /// Counts the locations of its kind from 1, in the order of the report.
  int number = 1;
  Side side = Side::left;
  LocationPart real;
  LocationPart imaginary;

  /// Whether the points tell where it is: its deviation is at most 30 % of its distance from 0.
  bool IsDetermined() const;
  /// Whether any of its parts can move.
  bool IsFree() const;
  bool IsPair() const { return real.value != 0 && imaginary.value != 0; }
  /// |location| / (2 |real|), of a pair.
  double Quality() const;
  /// "pole pair 2".
  std::string Name() const;
};

/// All poles and zeros, kind by kind in the order of the questions, each kind as SortedFactors
/// has it.
std::vector<LocationFigures> LocationsOf(const Problem& problem, const Iterate& iterate);

/// K of H = K prod(s - z) / prod(s - p) in normalised s.
double LeadingConstant(const Problem& problem, const Iterate& iterate);

}  // namespace polefit

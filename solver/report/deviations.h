#pragma once

#include <Eigen/Core>
#include <vector>

#include "solver/problem/problem.h"
#include "solver/report/locations.h"

namespace polefit {

/// How much the points say about the answer.
struct Trust {
  /// One standard deviation, normalised, an entry a parameter; NaN where there is none: held, on a
  /// bound, or not determined at all.
  Eigen::VectorXd deviations;
  /// Rows with weight less the fitted numbers: those free to move, the gain, a free delay constant.
  int freedom = 0;
  /// The fitted numbers that are free to move.
  int freeNumbers = 0;
};

/// The standard deviations of the locations, if the errors were noise of the same size in the
/// weighted measure: with J the derivatives of the errors r by all numbers that are free, and one
/// weight c and one variance s^2 for passband rows and for delay rows,
///   C = inv(A) [sum c^2 s^2 J'J] inv(A),  A = sum c J'J,
/// the sandwich of a weighted least-squares fit (A. C. Davison, Statistical Models, 2003, 8.6).
/// s^2 is mean(r^2) M/(M - p); F counts as `roundingCost` at least. Equalised zeros follow the
/// others. Linear, so that it is low where a location is hardly determined.
Trust JudgeTrust(const Problem& problem, const Iterate& iterate,
                 const std::vector<LocationFigures>& locations, double roundingCost);

/// Writes the deviations into the locations.
void AddDeviations(const Trust& trust, std::vector<LocationFigures>& locations);

/// What the signs of the errors look like in the order of their frequencies.
enum class ErrorPattern {
  unknown,    ///< too few rows to tell, or errors no larger than the rounding of the points
  random,     ///< as noise has them
  systematic  ///< too few changes of sign: the model lacks something
};

/// The runs test of A. Wald and J. Wolfowitz (Ann. Math. Statist. 11 (1940) 147) at 2.5 %.
ErrorPattern JudgePattern(const Problem& problem, const Iterate& iterate, int freeNumbers,
                          double roundingCost);

}  // namespace polefit

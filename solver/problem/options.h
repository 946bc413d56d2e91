#pragma once

#include <array>

namespace polefit {

/// The nine controls of the solvers, with their defaults.
struct Options {
  /// REMAX: barrier problems a start (ORCA), Newton iterations an equalisation (LYNX), Newton
  /// iterations a peak (WREN).
  std::array<int, 3> maxIterations = {5, 10, 7};

  /// DETAIL: every N-th barrier problem, LYNX iteration and WREN iteration prints a line; 0 none.
  std::array<int, 3> detail = {0, 0, 0};

  /// ZERO. A barrier problem ends when
  ///   predicted decrease <= 0.01 tolerance[0] F;
  /// an equalisation when all neighbouring peaks of ln|H| fulfil
  ///   |M_k - M_(k+1)| < tolerance[1],
  /// after one step more; a peak when
  ///   |step| <= tolerance[2] frequency.
  std::array<double, 3> tolerance = {1e-5, 1e-5, 1e-5};

  /// STEPSLIM: trust-region steps a barrier problem and a polish.
  int maxSteps = 100;

  /// STEPOUT: of the typed start every N-th step prints a line; 0 none.
  int stepOut = 10;

  /// EVALMAX: model evaluations of the whole run.
  int maxEvaluations = 2000;

  /// SETRHO = 2: a start begins with the Gauss-Newton model of F, otherwise with the exact one.
  bool beginsWithGaussNewton = false;

  /// RATIO: RHO falls at least by this factor from one barrier problem to the next.
  double ratio = 16;

  /// ACCURACY. No further barrier problem when
  ///   2 n RHO < accuracy F  and  |F - former F| < accuracy F;
  /// the polish ends when
  ///   predicted decrease <= 1e-4 accuracy F
  /// or four steps in a row, none cut by the radius, each gain less than 0.1 accuracy F.
  double accuracy = 1e-4;
};

}  // namespace polefit

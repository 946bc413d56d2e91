#pragma once

#include <Eigen/Core>

namespace polefit {

/// Rows of a squared magnitude to be fitted by base(x) N(x) / D(x), x = w^2.
struct SquaredMagnitude {
  Eigen::ArrayXd x;
  Eigen::ArrayXd magnitude;  ///< |H|, of any size
  Eigen::ArrayXd weight;     ///< of the error of |H|
  Eigen::ArrayXd base;       ///< the known factors of |H|^2
};

/// What fits them best of all rounds.
struct RationalFit {
  Eigen::VectorXcd zeros;  ///< the roots of N in x
  Eigen::VectorXcd poles;  ///< the roots of D in x
  /// mean((weight (|H| - magnitude))^2) with the best gain; negative N / D counts as 0.
  double meanSquare = 0;
};

/// Fits a quotient of polynomials of these degrees by the iteration of C. Sanathanan and J. Koerner
/// (IEEE Trans. Automatic Control 8 (1963) 56): the error multiplied by D is linear in the
/// coefficients, and each round divides it by the D of the round before. Not finite where the rows
/// do not tell.
RationalFit FitRational(const SquaredMagnitude& rows, int zeroDegree, int poleDegree);

}  // namespace polefit

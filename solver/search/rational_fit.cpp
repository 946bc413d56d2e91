#include "solver/search/rational_fit.h"

#include <Eigen/Eigenvalues>
#include <Eigen/QR>
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace polefit {

using Eigen::ArrayXd;
using Eigen::Index;
using Eigen::MatrixXd;
using Eigen::VectorXcd;
using Eigen::VectorXd;

namespace {

/// More rounds changed no textbook fit; the best one is kept, not the last.
constexpr int kRounds = 16;
/// Where |H| is below this share of its largest, the error of |H|^2 is no longer divided by 2|H|,
/// so that a null keeps a finite weight.
constexpr double kLeastMagnitude = 1e-3;
constexpr double kLeastDenominator = 1e-12;

/// Polynomials that are orthonormal in a weight at the rows, made by multiplying the last one by
/// the variable (P. Brubeck, Y. Nakatsukasa and L. Trefethen, SIAM Rev. 63 (2021) 405: Vandermonde
/// with Arnoldi). Coefficients in them keep all digits where those of powers lose them.
class ArnoldiBasis {
 public:
  ArnoldiBasis(const ArrayXd& t, const ArrayXd& weight, int degree)
      : values_(t.size(), degree + 1), recurrence_(MatrixXd::Zero(degree + 1, degree)) {
    values_.col(0).setConstant(1 / weight.matrix().norm());
    for (int k = 0; k < degree; ++k) {
      VectorXd next = t * values_.col(k).array();
      // Once leaves rounding errors of the parts that are taken off; twice is enough.
      for (int pass = 0; pass < 2; ++pass) {
        const auto former = values_.leftCols(k + 1);
        const VectorXd parts = former.transpose() * (weight.square() * next.array()).matrix();
        next -= former * parts;
        recurrence_.col(k).head(k + 1) += parts;
      }
      recurrence_(k + 1, k) = (weight * next.array()).matrix().norm();
      values_.col(k + 1) = next / recurrence_(k + 1, k);
    }
  }

  /// A column a polynomial, an entry a row.
  const MatrixXd& Values() const { return values_; }

  /// The roots of a polynomial in t: the eigenvalues of its comrade matrix. A root beyond all
  /// measure is left out.
  VectorXcd Roots(const VectorXd& coefficients) const {
    constexpr double kNoCoefficient = 1e-13;
    Index degree = coefficients.size() - 1;
    const double least = kNoCoefficient * coefficients.norm();
    while (degree > 0 && !(std::abs(coefficients[degree]) > least)) --degree;
    if (degree == 0) return {};
    MatrixXd comrade = recurrence_.topLeftCorner(degree, degree);
    comrade.col(degree - 1) -=
        recurrence_(degree, degree - 1) / coefficients[degree] * coefficients.head(degree);
    return comrade.eigenvalues();
  }

 private:
  MatrixXd values_;
  /// t times polynomial k is the sum of the column's entries times the polynomials.
  MatrixXd recurrence_;
};

/// The vector of length 1 that the matrix shortens most: inverse iteration with the triangle of its
/// QR decomposition, which squares nothing.
VectorXd MostShortened(const MatrixXd& matrix) {
  constexpr int kIterations = 4;
  const Index size = matrix.cols();
  MatrixXd triangle =
      matrix.householderQr().matrixQR().topRows(size).triangularView<Eigen::Upper>();
  const double tiny = 1e-18 * triangle.norm() + std::numeric_limits<double>::min();
  for (Index i = 0; i < size; ++i) {
    if (std::abs(triangle(i, i)) < tiny) triangle(i, i) = tiny;
  }
  VectorXd vector = VectorXd::Ones(size).normalized();
  for (int i = 0; i < kIterations; ++i) {
    triangle.transpose().triangularView<Eigen::Lower>().solveInPlace(vector);
    vector.normalize();
    triangle.triangularView<Eigen::Upper>().solveInPlace(vector);
    vector.normalize();
  }
  return vector;
}

/// mean((weight (g |H| - magnitude))^2) with the best gain g.
double MeanSquare(const SquaredMagnitude& rows, const ArrayXd& squared) {
  const ArrayXd obtained = rows.weight * squared.max(0).sqrt();
  const ArrayXd wanted = rows.weight * rows.magnitude;
  const double gain = (obtained * wanted).sum() / obtained.square().sum();
  return (gain * obtained - wanted).square().mean();
}

}  // namespace

RationalFit FitRational(const SquaredMagnitude& rows, int zeroDegree, int poleDegree) {
  const double half = rows.x.maxCoeff() / 2;
  const ArrayXd t = rows.x / half - 1;
  const ArrayXd magnitude = rows.magnitude / rows.magnitude.maxCoeff();
  const ArrayXd divided = rows.weight / (2 * magnitude.max(kLeastMagnitude));
  ArrayXd former = ArrayXd::Ones(t.size());
  RationalFit best;
  best.meanSquare = std::numeric_limits<double>::infinity();
  for (int round = 0; round < kRounds; ++round) {
    const ArrayXd ofZeros = divided * rows.base / former;
    const ArrayXd ofPoles = divided * magnitude.square() / former;
    const ArnoldiBasis zeros(t, ofZeros, zeroDegree);
    const ArnoldiBasis poles(t, ofPoles, poleDegree);
    MatrixXd error(t.size(), zeroDegree + poleDegree + 2);
    error << ofZeros.matrix().asDiagonal() * zeros.Values(),
        -(ofPoles.matrix().asDiagonal() * poles.Values());
    if (!error.allFinite()) break;
    const VectorXd coefficients = MostShortened(error);
    const VectorXd numerator = coefficients.head(zeroDegree + 1);
    const VectorXd denominator = coefficients.tail(poleDegree + 1);
    const ArrayXd valueBelow = poles.Values() * denominator;
    const ArrayXd quotient = (zeros.Values() * numerator).array() / valueBelow;
    const double meanSquare = MeanSquare(rows, rows.base * quotient);
    if (meanSquare < best.meanSquare) {
      const auto toX = [half](const VectorXcd& roots) -> VectorXcd {
        return half * (roots.array() + 1.0);
      };
      best = {toX(zeros.Roots(numerator)), toX(poles.Roots(denominator)), meanSquare};
    }
    former = valueBelow.abs();
    former = former.max(kLeastDenominator * former.maxCoeff()).eval();
  }
  return best;
}

}  // namespace polefit

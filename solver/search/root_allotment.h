#pragma once

#include <Eigen/Core>
#include <complex>
#include <vector>

namespace polefit {

/// Roots as the factors of H(s) take them, all real and imaginary parts not negative.
struct AllottedRoots {
  std::vector<double> singles;
  std::vector<std::complex<double>> pairs;
};

/// The roots s = sqrt(-x) with real part >= 0 of the roots x of a polynomial in w^2: a real
/// negative x is a single, a conjugate pair of x is a pair. At a real positive x the polynomial
/// would change its sign; a pair close to the omega axis stands in for it.
AllottedRoots RootsInS(const Eigen::VectorXcd& x);

/// Makes exactly so many singles and pairs of them, changing as few as it can.
AllottedRoots AllotRoots(AllottedRoots roots, int singles, int pairs);

/// How many zeros of each kind the numerator has.
struct ZeroCounts {
  int omega = 0;
  int sigma = 0;  ///< 2 for a doublet
  int pairs = 0;
  int quads = 0;
};
struct AllottedZeros {
  std::vector<double> omega;
  double sigma = 0;
  std::vector<std::complex<double>> pairs;
  std::vector<std::complex<double>> quads;
};

/// Hands the roots x of the numerator in w^2 out: those next to the positive real axis to the
/// omega-axis zeros, two each, those next to the negative one to the sigma-axis zero.
AllottedZeros AllotZeros(const Eigen::VectorXcd& x, const ZeroCounts& counts);

}  // namespace polefit

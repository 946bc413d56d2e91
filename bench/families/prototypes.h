#pragma once

#include <complex>
#include <vector>

namespace polefit::families {

/// A filter by its roots, H(0) = 1. Roots off the sigma axis stand once, with a positive imaginary
/// part; poles have negative real parts. Frequencies are in radians, the band edge is 1.
struct Filter {
  std::vector<std::complex<double>> poles;
  std::vector<std::complex<double>> zeros;

  double MagnitudeAt(double w) const;
  /// The group delay in seconds.
  double DelayAt(double w) const;
  /// The filter with all frequencies multiplied by `factor`.
  Filter Scaled(double factor) const;
};

Filter operator*(const Filter& one, const Filter& other);

/// Half power at the band edge.
Filter Butterworth(int order);
Filter Bessel(int order);
/// `ripple` and `attenuation` in dB. The equal ripple ends at the band edge; the stopband of the
/// inverse Chebyshev filter begins there.
Filter Chebyshev(int order, double ripple);
Filter InverseChebyshev(int order, double attenuation);
/// W. Cauer's filter by Landen's transformations (M. Lutovac, D. Tosic and B. Evans, Filter Design
/// for Signal Processing, 2001, chapter 12).
Filter Elliptic(int order, double ripple, double attenuation);
/// Poles on the sigma axis at these magnitudes.
Filter RealPoles(const std::vector<double>& magnitudes);

}  // namespace polefit::families

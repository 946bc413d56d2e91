#pragma once

#include <array>
#include <vector>

#include "exchange/filter_result.h"

namespace polefit {

/// A polynomial in s of the second order at most, by rising powers.
using Quadratic = std::array<double, 3>;

/// A first- or second-order part of H(s), s normalised by Freq Norm: numerator / denominator. The
/// denominator is 1 at s = 0, and its order is at least the numerator's.
struct Section {
  Quadratic numerator;
  Quadratic denominator;

  bool IsSecondOrder() const { return denominator[2] != 0; }
  /// The size of its pole (of two different ones the geometric mean), normalised.
  double Frequency() const;
  /// The Q of the poles; 0 for the first order.
  double Quality() const;
};

/// H(s) as a product of sections, those of low Q first, so that the early ones do not overload. The
/// first has the gain. A pole pair takes the zeros nearest to it, the pair of the highest Q first;
/// two sigma-axis poles share a section only where a zero pair would be left over.
std::vector<Section> SectionsOf(const FilterResult& result);

/// The same with s in rad/s, every denominator with 1 at its highest power.
Section InRadians(const Section& section, double angularUnit);

}  // namespace polefit

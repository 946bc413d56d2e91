#pragma once

#include <array>
#include <string>
#include <string_view>

namespace polefit {

/// A number that a template asks for.
struct TemplateNumber {
  std::string_view name;  ///< with its unit; empty when there is none
  double standard = 0;
  double least = 0;
  double most = 0;
  int decimals = 0;
};

/// A shape over frequency that can be put into a column. x = 1 is Freq Norm.
struct FillTemplate {
  std::string_view name;
  std::array<TemplateNumber, 2> numbers;
  /// The formula, which the user may change.
  std::string (*expression)(double first, double second);
};

/// Flat, raised cosine (its null at x = 1), its root, Gaussian, Butterworth, Chebyshev and Bessel
/// low-pass magnitudes (edge, for Chebyshev the ripple's, at x = 1), a pulse's spectrum, a cable.
extern const std::array<FillTemplate, 9> kFillTemplates;

}  // namespace polefit

#pragma once

#include <cmath>
#include <complex>
#include <string>
#include <vector>

#include "base/text_format.h"

namespace polefit::testing {

/// A low-pass of five poles with a null at 40 MHz, gain 1 at 0: poles in parts of 20 MHz.
struct FilterSweep {
  static constexpr double kNormalMegahertz = 20;
  static constexpr double kSigma = .5;
  static constexpr double kReal[] = {.35, .12};
  static constexpr double kImaginary[] = {.8, 1.02};
  static constexpr double kNull = 2;

  static std::complex<double> At(double megahertz) {
    const std::complex<double> s(0, megahertz / kNormalMegahertz);
    std::complex<double> h = (1.0 + s * s / (kNull * kNull)) * kSigma / (s + kSigma);
    for (int i = 0; i < 2; ++i) {
      const double square = kReal[i] * kReal[i] + kImaginary[i] * kImaginary[i];
      h *= square / (s * s + 2 * kReal[i] * s + square);
    }
    return h;
  }

  /// Forty frequencies from 1.5 to 60 MHz.
  static std::vector<double> Frequencies() {
    std::vector<double> frequencies;
    for (int i = 1; i <= 40; ++i) frequencies.push_back(1.5 * i);
    return frequencies;
  }

  /// The values of one parameter as a network file writes them: "DB", "MA" or "RI".
  static std::string Pair(std::complex<double> h, const std::string& format) {
    const double degrees = std::arg(h) * 180 / std::acos(-1.0);
    if (format == "RI") return Format("%.12g %.12g", h.real(), h.imag());
    const double size = format == "DB" ? 20 * std::log10(std::abs(h)) : std::abs(h);
    return Format("%.12g %.12g", size, degrees);
  }
};

}  // namespace polefit::testing

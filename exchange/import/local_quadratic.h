#pragma once

#include <cstddef>
#include <vector>

namespace polefit {

/// The quadratic that fits `points` neighbours best (least squares), at one of them.
struct LocalFit {
  double value = 0;
  double slope = 0;
};

/// Fits a quadratic to y over x in a window of `points` neighbours around `at`, moved inside at the
/// ends. x rises. With fewer than three points a line or a constant.
LocalFit FitLocally(const std::vector<double>& x, const std::vector<double>& y, std::size_t at,
                    int points);

/// The value of that fit at every x.
std::vector<double> Smoothed(const std::vector<double>& x, const std::vector<double>& y,
                             int points);

}  // namespace polefit

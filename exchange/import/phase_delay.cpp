#include "exchange/import/phase_delay.h"

#include <algorithm>
#include <cmath>

#include "exchange/import/local_quadratic.h"

namespace polefit {

namespace {

constexpr double kFullTurn = 360;
/// A larger step may as well be one the other way round.
constexpr double kLargestStep = 150;
constexpr int kUsualPoints = 5;

/// Phases in degrees without their jumps by 360. `largestStep` receives the largest step left.
std::vector<double> Unwrapped(const std::vector<double>& phases, double& largestStep) {
  std::vector<double> unwrapped;
  largestStep = 0;
  for (const double phase : phases) {
    if (unwrapped.empty()) {
      unwrapped.push_back(phase);
      continue;
    }
    const double step = std::remainder(phase - unwrapped.back(), kFullTurn);
    largestStep = std::max(largestStep, std::abs(step));
    unwrapped.push_back(unwrapped.back() + step);
  }
  return unwrapped;
}

}  // namespace

void PhaseToDelay(Samples& samples, int points) {
  std::vector<double> frequencies;
  std::vector<double> phases;
  for (const Sample& row : samples.rows) {
    frequencies.push_back(row.frequency.value);
    phases.push_back(row.delay.value);
  }
  double largestStep = 0;
  phases = Unwrapped(phases, largestStep);
  if (largestStep > kLargestStep) {
    samples.fault = "sweep too coarse for a delay: the phase steps by more than 150 degrees";
    return;
  }
  // Degrees a MHz are 1/360 of a microsecond.
  constexpr double kNanoseconds = 1000 / kFullTurn;
  for (std::size_t i = 0; i < phases.size(); ++i) {
    const LocalFit fit = FitLocally(frequencies, phases, i, std::max(points, kUsualPoints));
    samples.rows[i].delay = {-fit.slope * kNanoseconds};
  }
}

}  // namespace polefit

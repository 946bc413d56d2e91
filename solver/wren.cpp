#include "solver/wren.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace polefit {

namespace {

/// Enough for the smooth part of |H|; its bumps have samples of their own.
constexpr int kSpacedSamples = 15;

class PeakSearch {
 public:
  PeakSearch(const LogCurve& curve, const Gap& gap, const Options& options, Listener& listener)
      : curve_(curve), gap_(gap), options_(options), listener_(listener) {}

  Peak Find() {
    TakeSamples();
    Eigen::Index best = 0;
    const double level = levels_.maxCoeff(&best);
    const Eigen::Index end = levels_.size() - 1;
    if (best == end && gap_.isLast && curve_.SlopeAt(gap_.to).first >= 0) {
      return {gap_.to, level, true};
    }
    const double low = best == 0 ? gap_.from : frequencies_[best - 1];
    const double high = best == end ? gap_.to : frequencies_[best + 1];
    double start = frequencies_[best];
    if (best == end && gap_.isLast) {
      start = (low + high) / 2;
    } else if (best > 0 && best < end) {
      start = Vertex(best);
    }
    return Refine(low, high, start);
  }

 private:
  void TakeSamples() {
    std::vector<double> frequencies(kSpacedSamples);
    const double ratio = std::pow(gap_.to / gap_.from, 1.0 / (kSpacedSamples + 1));
    double frequency = gap_.from;
    for (double& sample : frequencies) sample = frequency *= ratio;
    for (const double resonance : curve_.Resonances()) {
      if (!(resonance > gap_.from && resonance < gap_.to)) continue;
      frequencies.insert(frequencies.end(),
                         {resonance, (resonance + gap_.from) / 2, (resonance + gap_.to) / 2});
    }
    if (frequencies.size() > kSpacedSamples) std::sort(frequencies.begin(), frequencies.end());
    if (gap_.isLast) frequencies.push_back(gap_.to);
    frequencies_ = Eigen::ArrayXd::Map(frequencies.data(), std::ssize(frequencies));
    levels_ = curve_.At(frequencies_);
  }

  /// The top of the parabola through three samples, the middle one highest.
  double Vertex(Eigen::Index middle) const {
    const double frequency = frequencies_[middle];
    const double before = frequency - frequencies_[middle - 1];
    const double after = frequencies_[middle + 1] - frequency;
    const double rise = (levels_[middle] - levels_[middle - 1]) * after;
    const double fall = (levels_[middle] - levels_[middle + 1]) * before;
    const double sum = rise + fall;
    if (!(sum > 0)) return frequency;
    return frequency + (rise * after - fall * before) / (2 * sum);
  }

  /// Newton's method on the slope; a step that leaves the bracket halves it instead. What Newton
  /// has not settled is settled by bisection and a last Newton step.
  Peak Refine(double low, double high, double frequency) {
    constexpr int kMaxBisections = 60;
    const int newtonSteps = options_.maxIterations[2];
    for (int i = 0; i < newtonSteps + kMaxBisections; ++i) {
      const Slope slope = curve_.SlopeAt(frequency);
      (slope.first > 0 ? low : high) = frequency;
      const double newton = frequency - slope.first / slope.second;
      const bool newtonFits = slope.second < 0 && newton > low && newton < high;
      const double next = newtonFits && i < newtonSteps ? newton : (low + high) / 2;
      const double step = next - frequency;
      frequency = next;
      listener_.WrenIterated(frequency, step);
      if (std::abs(step) <= options_.tolerance[2] * frequency) break;
    }
    const Slope slope = curve_.SlopeAt(frequency);
    const double newton = frequency - slope.first / slope.second;
    if (slope.second < 0 && newton > low && newton < high) frequency = newton;
    return {frequency, curve_.At(frequency), false};
  }

  const LogCurve& curve_;
  const Gap& gap_;
  const Options& options_;
  Listener& listener_;
  Eigen::ArrayXd frequencies_;
  Eigen::ArrayXd levels_;
};

}  // namespace

Peak FindPeak(const LogCurve& curve, const Gap& gap, const Options& options, Listener& listener) {
  return PeakSearch(curve, gap, options, listener).Find();
}

}  // namespace polefit

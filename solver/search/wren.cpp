#include "solver/search/wren.h"

#include <algorithm>
#include <cmath>
#include <limits>
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
    const Eigen::Index end = levels_.size() - 1;
    Peak highest;
    highest.level = -std::numeric_limits<double>::infinity();
    for (Eigen::Index i = 0; i <= end; ++i) {
      if (i > 0 && levels_[i] < levels_[i - 1]) continue;
      if (i < end && levels_[i] <= levels_[i + 1]) continue;
      const Peak peak = PeakAround(i);
      if (peak.level > highest.level) highest = peak;
    }
    return highest;
  }

 private:
  void TakeSamples() {
    std::vector<double> frequencies(kSpacedSamples);
    const double ratio = std::pow(gap_.to / gap_.from, 1.0 / (kSpacedSamples + 1));
    double frequency = gap_.from;
    for (double& sample : frequencies) sample = frequency *= ratio;
    for (const Resonance& resonance : curve_.Resonances()) AddSamples(resonance, frequencies);
    if (frequencies.size() > kSpacedSamples) std::sort(frequencies.begin(), frequencies.end());
    if (gap_.isLast) frequencies.push_back(gap_.to);
    frequencies_ = Eigen::ArrayXd::Map(frequencies.data(), std::ssize(frequencies));
    levels_ = curve_.At(frequencies_);
  }

  /// Samples a bump that may be narrower than the space between the others. The slope of all other
  /// factors moves its top; a zero closer to it than its width pushes it out to about the pair's
  /// distance from the zero.
  void AddSamples(const Resonance& resonance, std::vector<double>& frequencies) const {
    const auto [middle, width] = resonance;
    if (!(middle + width > gap_.from && middle - width < gap_.to)) return;
    const double top = middle + width * width * curve_.SlopeAt(middle).first;
    for (const double sample :
         {top - width, top, top + width, gap_.from + std::hypot(middle - gap_.from, width),
          gap_.to - std::hypot(gap_.to - middle, width)}) {
      if (sample > gap_.from && sample < gap_.to) frequencies.push_back(sample);
    }
  }

  /// The peak next to a sample that is higher than its neighbours.
  Peak PeakAround(Eigen::Index sample) const {
    const Eigen::Index end = levels_.size() - 1;
    const bool isGapEnd = sample == end && gap_.isLast;
    if (isGapEnd && curve_.SlopeAt(gap_.to).first >= 0) return {gap_.to, levels_[sample], true};
    const double low = sample == 0 ? gap_.from : frequencies_[sample - 1];
    const double high = sample == end ? gap_.to : frequencies_[sample + 1];
    double start = frequencies_[sample];
    if (isGapEnd) {
      start = (low + high) / 2;
    } else if (sample > 0 && sample < end) {
      start = Vertex(sample);
    }
    const Peak peak = Refine(low, high, start, options_.maxIterations[2]);
    // Next to a zero Newton's steps can be short far from a peak.
    const bool isLost = peak.level < levels_[sample];
    return isLost ? Refine(low, high, frequencies_[sample], 0) : peak;
  }

  /// The top of the parabola through three samples, the middle one highest. Uneven ones may belong
  /// to two bumps.
  double Vertex(Eigen::Index middle) const {
    const double frequency = frequencies_[middle];
    const double before = frequency - frequencies_[middle - 1];
    const double after = frequencies_[middle + 1] - frequency;
    if (std::max(before, after) > 2 * std::min(before, after)) return frequency;
    const double rise = (levels_[middle] - levels_[middle - 1]) * after;
    const double fall = (levels_[middle] - levels_[middle + 1]) * before;
    const double sum = rise + fall;
    if (!(sum > 0)) return frequency;
    return frequency + (rise * after - fall * before) / (2 * sum);
  }

  /// Newton's method on the slope; a step that leaves the bracket halves it instead. What Newton
  /// has not settled is settled by bisection and a last Newton step.
  Peak Refine(double low, double high, double frequency, int newtonSteps) const {
    constexpr int kMaxBisections = 60;
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
    if (slope.second < 0) frequency = std::clamp(newton, low, high);
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

#include "solver/wren.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace polefit {

namespace {

/// Enough for the smooth part of |H|; its bumps have samples of their own.
constexpr int kSpacedSamples = 15;

struct Sample {
  double frequency;
  double level;
};

class PeakSearch {
 public:
  PeakSearch(const LogCurve& curve, const Gap& gap, const Options& options, Listener& listener)
      : curve_(curve), gap_(gap), options_(options), listener_(listener) {}

  Peak Find() {
    TakeSamples();
    const auto best = std::max_element(
        samples_.begin(), samples_.end(),
        [](const Sample& one, const Sample& other) { return one.level < other.level; });
    const bool isFirst = best == samples_.begin();
    const bool isLast = best + 1 == samples_.end();
    if (isLast && gap_.isLast && curve_.SlopeAt(gap_.to).first >= 0) {
      return {gap_.to, best->level, true};
    }
    const double low = isFirst ? gap_.from : (best - 1)->frequency;
    const double high = isLast ? gap_.to : (best + 1)->frequency;
    double start = best->frequency;
    if (isLast && gap_.isLast) {
      start = (low + high) / 2;
    } else if (!isFirst && !isLast) {
      start = Vertex(*(best - 1), *best, *(best + 1));
    }
    return Refine(low, high, start);
  }

 private:
  void TakeSamples() {
    samples_.reserve(kSpacedSamples + 1 + 3 * curve_.Resonances().size());
    const double ratio = std::pow(gap_.to / gap_.from, 1.0 / (kSpacedSamples + 1));
    double frequency = gap_.from;
    for (int i = 0; i < kSpacedSamples; ++i) Add(frequency *= ratio);
    bool isSorted = true;
    for (const double resonance : curve_.Resonances()) {
      if (!(resonance > gap_.from && resonance < gap_.to)) continue;
      Add(resonance);
      Add((resonance + gap_.from) / 2);
      Add((resonance + gap_.to) / 2);
      isSorted = false;
    }
    if (!isSorted) {
      std::sort(samples_.begin(), samples_.end(), [](const Sample& one, const Sample& other) {
        return one.frequency < other.frequency;
      });
    }
    if (gap_.isLast) Add(gap_.to);
  }

  void Add(double frequency) { samples_.push_back({frequency, curve_.At(frequency)}); }

  /// The top of the parabola through three samples, the middle one highest.
  static double Vertex(const Sample& left, const Sample& middle, const Sample& right) {
    const double before = middle.frequency - left.frequency;
    const double after = right.frequency - middle.frequency;
    const double rise = (middle.level - left.level) * after;
    const double fall = (middle.level - right.level) * before;
    const double sum = rise + fall;
    if (!(sum > 0)) return middle.frequency;
    return middle.frequency + (rise * after - fall * before) / (2 * sum);
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
  std::vector<Sample> samples_;
};

}  // namespace

Peak FindPeak(const LogCurve& curve, const Gap& gap, const Options& options, Listener& listener) {
  return PeakSearch(curve, gap, options, listener).Find();
}

}  // namespace polefit

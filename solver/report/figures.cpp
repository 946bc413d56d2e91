#include "solver/report/figures.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "solver/report/last_run.h"
#include "solver/search/sidelobes.h"

namespace polefit {

namespace {

/// Rows below this part of the largest Yout hardly count while Ipower is below 1.
constexpr double kSkirt = 0.1;
constexpr double kDecibelsPerNeper = 8.685889638065037;

/// How many parts of locations are not free to move.
int CountBounds(const std::vector<LocationFigures>& locations) {
  int count = 0;
  for (const LocationFigures& location : locations) {
    if (location.isOwnPole) continue;
    for (const LocationPart* const part : {&location.real, &location.imaginary}) {
      if (part->bound != Bound::none) ++count;
    }
  }
  return count;
}

/// H(s) of a point that a run has found.
TransferFunction AtBest(const Problem& problem, const Iterate& iterate) {
  return {problem, {iterate.parameters.begin(), iterate.parameters.end()}};
}

DelayFigures JudgeDelay(const Problem& problem, const Iterate& iterate) {
  DelayFigures figures;
  static_cast<DelayFit&>(figures) = AtBest(problem, iterate).DelayPoints();
  figures.constant = iterate.fit.delayConstant;
  double sum = 0;
  for (const double error : figures.error) {
    sum += error * error;
    figures.largest = std::max(figures.largest, std::abs(error));
  }
  const auto [least, most] = std::minmax_element(figures.total.begin(), figures.total.end());
  figures.peakToPeak = *most - *least;
  figures.rms = std::sqrt(sum / static_cast<double>(figures.total.size()));
  return figures;
}

std::vector<Sidelobe> SidelobesOf(const Problem& problem, const Iterate& iterate) {
  std::vector<double> zeros;
  for (const std::size_t index : SortedFactors(problem, iterate, FactorKind::omegaZero)) {
    zeros.push_back(iterate.parameters[problem.constellation.factors[index].parameter]);
  }
  const std::vector<Peak> peaks =
      iterate.peaks.empty()
          ? FindSidelobes(problem, {iterate.parameters.begin(), iterate.parameters.end()})
          : iterate.peaks;
  std::vector<Sidelobe> sidelobes;
  sidelobes.reserve(peaks.size());
  for (const Peak& peak : peaks) {
    sidelobes.push_back(
        {zeros[sidelobes.size()], peak.frequency, kDecibelsPerNeper * peak.level, peak.isEnd});
  }
  return sidelobes;
}

}  // namespace

void Extreme::Take(double value, double at, int of) {
  if (std::abs(value) > size || row == 0) *this = {std::abs(value), at, of};
}

PassbandFigures JudgePassband(const Problem& problem, const Iterate& iterate) {
  PassbandFigures figures;
  static_cast<PassbandFit&>(figures) = AtBest(problem, iterate).Passband();
  const double largestYout = *std::max_element(figures.yout.begin(), figures.yout.end());
  const double leastTelling = problem.inputPower < 1 ? kSkirt * largestYout : 0;
  double squares = 0;
  for (std::size_t i = 0; i < figures.error.size(); ++i) {
    const int number = static_cast<int>(i) + 1;
    const double frequency = figures.frequency[i];
    squares += figures.error[i] * figures.error[i];
    figures.largest.Take(figures.error[i], frequency, number);
    figures.largestWeighted.Take(figures.weighted[i], frequency, number);
    const bool hasWeight = figures.weight[i] > 0;
    if (hasWeight) figures.telling.Take(figures.error[i] / largestYout, frequency, number);
    if (std::isnan(figures.decibels[i])) continue;
    figures.largestDecibels.Take(figures.decibels[i], frequency, number);
    if (!hasWeight || figures.yout[i] < leastTelling) continue;
    figures.tellingDecibels.Take(figures.decibels[i], frequency, number);
  }
  figures.rms = std::sqrt(squares / static_cast<double>(figures.error.size()));
  return figures;
}

Figures FiguresOf(const Problem& problem, const Summary& summary) {
  const Iterate& best = summary.best;
  Figures figures;
  figures.cost = best.fit.cost;
  figures.rms = std::sqrt(best.fit.meanSquare);
  figures.evaluations = summary.evaluations;
  figures.roundingCost = summary.roundingCost;
  figures.agreeing = summary.agreeing;
  figures.witnesses = summary.witnesses;
  figures.unseen = summary.unseenShare;
  figures.optima.reserve(summary.optima.size());
  for (const Optimum& optimum : summary.optima) figures.optima.push_back(optimum.cost);
  figures.starts = static_cast<int>(summary.starts.size());
  figures.poles = problem.PoleCount();
  figures.zeros = problem.ZeroCount();
  figures.inputPower = problem.inputPower;
  figures.freqNorm = problem.freqNorm;
  figures.gain = best.fit.gain;
  figures.constant = LeadingConstant(problem, best);
  figures.locations = LocationsOf(problem, best);
  const Trust trust = JudgeTrust(problem, best, figures.locations, summary.roundingCost);
  AddDeviations(trust, figures.locations);
  figures.freedom = trust.freedom;
  figures.errors = JudgePattern(problem, best, trust.freeNumbers, summary.roundingCost);
  figures.bounds = CountBounds(figures.locations);
  figures.passband = JudgePassband(problem, best);
  if (problem.wantsDelay) figures.delay = JudgeDelay(problem, best);
  figures.sidelobes = SidelobesOf(problem, best);
  return figures;
}

}  // namespace polefit

#include "solver/report/figures.h"

#include <cmath>

namespace polefit {

namespace {

/// Whether part 0 (real, or omega-axis zero) or 1 of a location stands on a bound or is held.
bool IsBound(const Problem& problem, const Point& point, const Factor& factor, std::size_t part) {
  const int index = factor.parameter + static_cast<int>(part);
  const double value = point.parameters[index];
  if (index >= problem.constellation.MovedCount()) return true;
  if (index < problem.constellation.orcaCount) {
    const bool isEnd =
        factor.kind == FactorKind::omegaZero && problem.Equalises() && IsAtRangeEnd(problem, value);
    return isEnd || value <= problem.lower[index] || value >= problem.upper[index];
  }
  return false;
}

int CountBounds(const Problem& problem, const Point& point) {
  int count = 0;
  for (const Factor& factor : problem.constellation.factors) {
    for (std::size_t part = 0; part < factor.Parts(); ++part) {
      if (IsBound(problem, point, factor, part)) ++count;
    }
  }
  return count;
}

}  // namespace

void Extreme::Take(double value, double at, int of) {
  if (std::abs(value) > size || row == 0) *this = {std::abs(value), at, of};
}

bool IsAtRangeEnd(const Problem& problem, double zero) {
  return zero > (1 - 1e-5) * problem.largest;
}

TransferFunction AtBest(const Problem& problem, const Point& point) {
  return {problem, {point.parameters.begin(), point.parameters.end()}};
}

PassbandFigures JudgePassband(const Problem& problem, const Point& point) {
  PassbandFigures figures;
  static_cast<PassbandFit&>(figures) = AtBest(problem, point).Passband();
  double squares = 0;
  for (std::size_t i = 0; i < figures.error.size(); ++i) {
    const int number = static_cast<int>(i) + 1;
    const double frequency = figures.frequency[i];
    squares += figures.error[i] * figures.error[i];
    figures.largest.Take(figures.error[i], frequency, number);
    figures.largestWeighted.Take(figures.weighted[i], frequency, number);
    if (std::isnan(figures.decibels[i])) continue;
    figures.largestDecibels.Take(figures.decibels[i], frequency, number);
  }
  figures.rms = std::sqrt(squares / static_cast<double>(figures.error.size()));
  return figures;
}

Figures FiguresOf(const Problem& problem, const Summary& summary) {
  const Fit& fit = summary.best.fit;
  return {.cost = fit.cost,
          .rms = std::sqrt(fit.meanSquare),
          .evaluations = summary.evaluations,
          .agreeing = summary.StartsNear(summary.best.Cost()),
          .starts = static_cast<int>(summary.starts.size()),
          .bounds = CountBounds(problem, summary.best),
          .passband = JudgePassband(problem, summary.best)};
}

}  // namespace polefit

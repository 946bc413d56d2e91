#include "solver/report/figures.h"

#include <cmath>
#include <limits>

#include "solver/model/model.h"

namespace polefit {

namespace {

constexpr double kDecibelsPerNeper = 8.685889638065037;

/// At an omega-axis zero |H| is kept off 0 by so little that it would show as 1e-100.
double NotTiny(double value) {
  return std::abs(value) < 1e-90 ? 0 : value;
}

double InDecibels(double ratio) {
  if (!(ratio > 0)) return std::numeric_limits<double>::quiet_NaN();
  return kDecibelsPerNeper * std::log(ratio);
}

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

PassbandFigures JudgePassband(const Problem& problem, const Point& point) {
  PassbandFigures figures;
  const double gain = point.fit.gain;
  const Eigen::ArrayXd magnitudes =
      Magnitudes(problem.constellation, point.parameters, problem.rows.frequencies);
  double squares = 0;
  for (std::size_t index = 0; index < problem.passband.size(); ++index) {
    const auto i = static_cast<Eigen::Index>(index);
    const PassbandPoint& row = problem.passband[index];
    const int number = static_cast<int>(index) + 1;
    const double obtained = NotTiny(gain * row.yin * magnitudes[i]);
    const double error = obtained - row.yout;
    const double weighted =
        NotTiny(gain * problem.rows.inputs[i] * magnitudes[i] - problem.rows.targets[i]);
    const double decibels = InDecibels(row.yout > 0 ? obtained / row.yout : 0);
    figures.obtained.push_back(obtained);
    figures.error.push_back(error);
    figures.weighted.push_back(weighted);
    figures.decibels.push_back(decibels);
    squares += error * error;
    figures.largest.Take(error, row.frequency, number);
    figures.largestWeighted.Take(weighted, row.frequency, number);
    if (!std::isnan(decibels)) figures.largestDecibels.Take(decibels, row.frequency, number);
  }
  figures.rms = std::sqrt(squares / static_cast<double>(problem.passband.size()));
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

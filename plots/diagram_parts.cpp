#include "plots/diagram_parts.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace polefit {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

double Decibels(double value) {
  return value > 0 ? 20 * std::log10(value) : kNone;
}

}  // namespace

double Rounded4(double value) {
  if (value == 0) return 0;
  const double scale = std::pow(10, 3 - std::floor(std::log10(std::abs(value))));
  return std::round(value * scale) / scale;
}

bool HasRow(const FitCurves& curves, std::size_t row, double megahertz) {
  const std::vector<double>& frequencies = curves.passband.frequency;
  return row < frequencies.size() && frequencies[row] == megahertz;
}

SeriesRole RoleOf(CurveRole role) {
  switch (role) {
    case CurveRole::typed:
      return SeriesRole::typed;
    case CurveRole::preview:
      return SeriesRole::preview;
    case CurveRole::result:
      return SeriesRole::result;
    case CurveRole::other:
      return SeriesRole::other;
    default:
      return SeriesRole::another;
  }
}

std::string LegendText(const FitCurves& curves) {
  if (!curves.h->HasPoints()) return curves.name;
  return curves.name + ", rms " + Figure(curves.h->RmsError(), 3);
}

void MarkResults(Diagram& diagram) {
  constexpr int kMarks = 24;
  if (diagram.kind == DiagramKind::error) return;
  std::vector<Series> marks;
  for (const Series& line : diagram.series) {
    if (line.role != SeriesRole::result || line.x.empty()) continue;
    Series one = {"", SeriesRole::resultMarks, {}, {}, line.isPale};
    for (int i = 0; i < kMarks; ++i) {
      const double share = (i + .5) / kMarks;
      const double x = diagram.x.isLogarithmic
                           ? diagram.x.from * std::pow(diagram.x.to / diagram.x.from, share)
                           : diagram.x.from + share * (diagram.x.to - diagram.x.from);
      const auto next = std::lower_bound(line.x.begin(), line.x.end(), x);
      if (next == line.x.end() || (next == line.x.begin() && *next > x)) continue;
      one.x.push_back(*next);
      one.y.push_back(line.y[static_cast<std::size_t>(next - line.x.begin())]);
    }
    marks.push_back(std::move(one));
  }
  for (Series& one : marks) diagram.series.push_back(std::move(one));
}

void FitAxis(const std::vector<Series>& series, Axis& axis) {
  double least = std::numeric_limits<double>::infinity();
  double most = -least;
  for (const Series& one : series) {
    for (const double value : one.y) {
      if (!std::isfinite(value)) continue;
      least = std::min(least, value);
      most = std::max(most, value);
    }
  }
  if (least > most) least = most = 0;
  const double room = most > least ? .06 * (most - least) : std::max(.1 * std::abs(most), 1e-3);
  axis.from = least - room;
  axis.to = most + room;
}

bool IsHidden(const FitCurves& curves, const DiagramChoices& choices) {
  return std::ranges::find(choices.hidden, curves.name) != choices.hidden.end();
}

const FitCurves& MainCurves(const ShownCurves& shown, const DiagramChoices& choices) {
  const FitCurves* main = nullptr;
  for (const FitCurves* const curves : shown) {
    if (IsHidden(*curves, choices)) continue;
    if (main == nullptr || curves->role <= CurveRole::result) main = curves;
  }
  return main == nullptr ? *shown.front() : *main;
}

DiagramParts::DiagramParts(const ShownCurves& shown, const DiagramChoices& choices)
    : shown_(shown),
      choices_(choices),
      main_(MainCurves(shown, choices)),
      range_(RangeOf(*shown.front()->h, choices.showsPlainMagnitude)),
      unit_(UnitOfFrequencies(range_.to)) {}

Axis DiagramParts::FrequencyAxis() const {
  Axis axis = {std::string("frequency, ") + unit_.name, range_.from * unit_.factor,
               range_.to * unit_.factor, choices_.isLogFrequency};
  if (!choices_.isLogFrequency) {
    const double room = .02 * (axis.to - axis.from);
    axis.from -= room;
    axis.to += room;
    return axis;
  }
  if (range_.from <= 0) {
    // From the lowest point above 0 on.
    double least = range_.to / 100;
    for (const double f : shown_.front()->passband.frequency) {
      if (f > 0) least = std::min(least, f);
    }
    axis.from = least * unit_.factor;
  }
  axis.from /= 1.05;
  axis.to *= 1.05;
  return axis;
}

std::vector<double> DiagramParts::InUnit(const std::vector<double>& megahertz) const {
  std::vector<double> values = megahertz;
  for (double& value : values) value *= unit_.factor;
  return values;
}

double DiagramParts::Level(double value) const {
  return choices_.isLinear ? value : Decibels(value);
}

std::vector<double> DiagramParts::Levels(std::vector<double> values) const {
  for (double& value : values) value = Level(value);
  return values;
}

/// A stop a row, on the main curve, or one at each of its steps where there are no rows. `values`
/// belong to the curve's frequencies and have the unit of the axis.
void DiagramParts::AddStopsAlong(Diagram& diagram, const std::vector<double>& values) const {
  const std::vector<double>& at = main_.megahertz;
  const auto add = [&](double megahertz, double value, std::size_t index) {
    if (std::isfinite(value)) diagram.stops.push_back({megahertz * unit_.factor, value, index});
  };
  diagram.stopKind = HasPoints() ? StopKind::passbandRow : StopKind::sample;
  if (!HasPoints()) {
    for (std::size_t i = 0; i < at.size(); ++i) add(at[i], values[i], i);
    return;
  }
  const std::vector<double>& rows = shown_.front()->passband.frequency;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    const auto behind = std::clamp<std::ptrdiff_t>(
        std::ranges::upper_bound(at, rows[row]) - at.begin(), 1, std::ssize(at) - 1);
    const auto i = static_cast<std::size_t>(behind);
    add(rows[row],
        std::lerp(values[i - 1], values[i], (rows[row] - at[i - 1]) / (at[i] - at[i - 1])), row);
  }
}

std::string DiagramParts::CountSentence() const {
  const int poles = main_.h->PoleCount();
  const int zeros = main_.h->ZeroCount();
  return std::to_string(poles) + (poles == 1 ? " pole, " : " poles, ") + std::to_string(zeros) +
         (zeros == 1 ? " zero" : " zeros");
}

}  // namespace polefit

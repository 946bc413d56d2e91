#include <algorithm>
#include <cmath>
#include <limits>

#include "plots/diagram_parts.h"

namespace polefit {

namespace {

constexpr double kNoLevel = std::numeric_limits<double>::quiet_NaN();
/// The deepest dB axis, and how far it goes below the smallest wanted value.
constexpr double kDeepest = 120;
constexpr double kBelowSmallest = 10;

/// "0 to 10 MHz", "1 kHz to 3 GHz"
std::string RangeText(const FrequencyRange& range) {
  const Unit unit = UnitOfFrequencies(range.to);
  const bool isInUnit = range.from <= 0 || range.from * unit.factor >= .001;
  const std::string from =
      isInUnit ? Figure(range.from * unit.factor, 4) : FrequencyText(Rounded4(range.from));
  return from + " to " + FrequencyText(range.to);
}

}  // namespace

void DiagramParts::AddWanted(Diagram& diagram) const {
  const PassbandFit& points = shown_.front()->passband;
  Series wanted = {"wanted", SeriesRole::wanted, {}, {}};
  Series notCounted = {"", SeriesRole::notCounted, {}, {}};
  Series below = {"", SeriesRole::belowAxis, {}, {}};
  for (std::size_t i = 0; i < points.frequency.size(); ++i) {
    const double x = points.frequency[i] * unit_.factor;
    const bool isBelow = !choices_.isLinear && points.yout[i] <= 0;
    Series& series = isBelow ? below : points.weight[i] == 0 ? notCounted : wanted;
    series.x.push_back(x);
    series.y.push_back(isBelow ? kNoLevel : Level(points.yout[i]));
    diagram.stops.push_back({x, series.y.back(), i});
  }
  diagram.stopKind = StopKind::passbandRow;
  diagram.series.push_back(std::move(wanted));
  if (!notCounted.x.empty()) diagram.series.push_back(std::move(notCounted));
  if (!below.x.empty()) diagram.series.push_back(std::move(below));
}

void DiagramParts::AddObtained(Diagram& diagram) const {
  for (const FitCurves* const curves : shown_) {
    if (curves->isPointsAlone) continue;
    Series series = {LegendText(*curves), RoleOf(curves->role), {}, {}, curves->isPale};
    if (IsSeen(*curves)) {
      series.x = InUnit(curves->megahertz);
      series.y = Levels(HasPoints() ? curves->obtained : curves->magnitude);
    }
    diagram.series.push_back(std::move(series));
  }
  // Of more than one they could not be told apart.
  if (choices_.showsPlainMagnitude && HasPoints() && IsSeen(main_) && !main_.isPointsAlone) {
    diagram.series.push_back({main_.name + ", |H| alone", SeriesRole::plainMagnitude,
                              InUnit(main_.megahertz), Levels(main_.magnitude)});
  }
}

void DiagramParts::AddInput(Diagram& diagram) const {
  const PassbandFit& points = shown_.front()->passband;
  const bool isFlat =
      std::all_of(points.yin.begin(), points.yin.end(), [](double yin) { return yin == 1; });
  if (isFlat) return;
  const std::vector<double>& megahertz =
      shown_.front()->isPointsAlone ? points.frequency : shown_.front()->megahertz;
  diagram.series.push_back(
      {"Yin", SeriesRole::input, InUnit(megahertz), Levels(shown_.front()->h->Inputs(megahertz))});
}

/// On the curve that is drawn: Yin |H|, which ends with the points, or |H| itself.
void DiagramParts::AddSidelobes(Diagram& diagram) const {
  if (!IsSeen(main_)) return;
  std::vector<double> inputs(main_.sidelobes.size(), 1);
  if (HasPoints() && !choices_.showsPlainMagnitude) {
    std::vector<double> megahertz;
    for (const SidelobePeak& peak : main_.sidelobes) megahertz.push_back(peak.megahertz);
    inputs = main_.h->Inputs(megahertz);
  }
  Series peaks = {"", SeriesRole::sidelobe, {}, {}};
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    const SidelobePeak& peak = main_.sidelobes[i];
    if (peak.megahertz > range_.to || std::isnan(inputs[i])) continue;
    peaks.x.push_back(peak.megahertz * unit_.factor);
    peaks.y.push_back(Level(inputs[i] * peak.magnitude));
  }
  if (!peaks.x.empty()) diagram.series.push_back(std::move(peaks));
}

/// In dB from the largest value down to a little below the smallest wanted one.
void DiagramParts::FindLevelAxis(Diagram& diagram) const {
  FitAxis(diagram.series, diagram.y);
  if (choices_.isLinear) {
    diagram.y.from = std::max(diagram.y.from, -.06 * diagram.y.to);
    return;
  }
  double largest = -std::numeric_limits<double>::infinity();
  double smallest = std::numeric_limits<double>::infinity();
  for (const Series& series : diagram.series) {
    for (const double value : series.y) {
      if (!std::isnan(value)) largest = std::max(largest, value);
      const bool isWanted =
          series.role == SeriesRole::wanted || series.role == SeriesRole::notCounted;
      if (isWanted && !std::isnan(value)) smallest = std::min(smallest, value);
    }
  }
  if (!std::isfinite(largest)) return;
  for (const Series& series : diagram.series) {
    if (series.role != SeriesRole::sidelobe) continue;
    for (const double value : series.y) {
      if (!std::isnan(value)) smallest = std::min(smallest, value);
    }
  }
  if (!std::isfinite(smallest)) smallest = largest - 60;
  diagram.y.to = largest + .05 * (largest - smallest) + .5;
  diagram.y.from = std::max(smallest - kBelowSmallest, largest - kDeepest);
}

/// A wanted 0 has no place on a dB axis: a mark at its lower edge.
void DiagramParts::PlaceBelowAxis(Diagram& diagram) const {
  const double edge = diagram.y.from + .03 * (diagram.y.to - diagram.y.from);
  for (Series& series : diagram.series) {
    if (series.role == SeriesRole::belowAxis) std::fill(series.y.begin(), series.y.end(), edge);
  }
  for (Stop& stop : diagram.stops) {
    if (std::isnan(stop.y)) stop.y = edge;
  }
}

void DiagramParts::DrawMagnitude(Diagram& diagram) const {
  diagram.x = FrequencyAxis();
  diagram.y.label = choices_.isLinear ? "magnitude" : "magnitude, dB";
  if (HasPoints()) AddWanted(diagram);
  if (HasPoints()) AddInput(diagram);
  AddObtained(diagram);
  AddSidelobes(diagram);
  if (!HasPoints()) AddStopsAlong(diagram, Levels(main_.magnitude));
  FindLevelAxis(diagram);
  PlaceBelowAxis(diagram);
  diagram.verticals.push_back(shown_.front()->h->FreqNorm() * unit_.factor);
  if (choices_.isLogFrequency && range_.from <= 0) {
    diagram.note = kNoZero;
  }
  SayMagnitude(diagram);
}

/// "wanted, typed and result 19:40, 0 to 10 MHz, worst error 0.1 dB at 9 MHz, 7 poles, 3 zeros": of
/// what is seen.
void DiagramParts::SayMagnitude(Diagram& diagram) const {
  std::vector<std::string> names;
  if (HasPoints()) names.emplace_back("wanted");
  for (const FitCurves* const curves : shown_) {
    if (!curves->isPointsAlone && IsSeen(*curves)) names.push_back(curves->name);
  }
  for (std::size_t i = 0; i < names.size(); ++i) {
    diagram.sentence += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + names[i];
  }
  if (!names.empty()) diagram.sentence += ", ";
  diagram.sentence += RangeText(range_);
  std::string rest;
  const bool tellsFit = !main_.isPointsAlone && IsSeen(main_);
  const WorstRow worst = WorstOf(main_.passband.decibels, main_.passband.frequency);
  if (tellsFit && worst.row > 0) {
    rest += ", worst error " + DecibelFigure(std::abs(worst.value)) + " dB at " +
            FrequencyText(worst.megahertz);
  }
  if (tellsFit) rest += ", " + CountSentence();
  diagram.sentence += rest;
  if (tellsFit) diagram.brief = main_.name + rest;
}

}  // namespace polefit

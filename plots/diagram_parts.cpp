#include "plots/diagram_parts.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace polefit {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
/// The deepest dB axis, and how far it goes below the smallest wanted value.
constexpr double kDeepest = 120;
constexpr double kBelowSmallest = 10;

double Decibels(double value) {
  return value > 0 ? 20 * std::log10(value) : kNone;
}

/// The step response over a longer time than its own.
StepResponse OverTime(const FitCurves& curves, double nanoseconds) {
  const std::size_t steps = curves.step.values.size();
  if (curves.step.nanoseconds.back() >= nanoseconds) return curves.step;
  return StepResponseOf(*curves.h, nanoseconds / static_cast<double>(steps - 1), steps);
}

/// Room for the note over the curves.
void MakeRoomForNote(Diagram& diagram) {
  constexpr double kShare = .14;
  if (!diagram.note.empty()) diagram.y.to += kShare * (diagram.y.to - diagram.y.from);
}

}  // namespace

double Rounded4(double value) {
  if (value == 0) return 0;
  const double scale = std::pow(10, 3 - std::floor(std::log10(std::abs(value))));
  return std::round(value * scale) / scale;
}

SeriesRole RoleOf(CurveRole role) {
  switch (role) {
    case CurveRole::typed:
      return SeriesRole::typed;
    case CurveRole::preview:
      return SeriesRole::preview;
    case CurveRole::result:
      return SeriesRole::result;
    default:
      return SeriesRole::other;
  }
}

std::string LegendText(const FitCurves& curves) {
  if (!curves.h->HasPoints()) return curves.name;
  return curves.name + ", rms " + Figure(curves.h->RmsError(), 3);
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

DiagramParts::DiagramParts(const ShownCurves& shown, const DiagramChoices& choices)
    : shown_(shown),
      choices_(choices),
      range_(RangeOf(*shown.front()->h, choices.showsPlainMagnitude)),
      unit_(FrequencyUnit(range_.to)) {}

bool DiagramParts::IsHidden(const std::string& name) const {
  return std::find(choices_.hidden.begin(), choices_.hidden.end(), name) != choices_.hidden.end();
}

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
    series.y.push_back(isBelow ? kNone : Level(points.yout[i]));
    diagram.stops.push_back({x, series.y.back(), i});
  }
  diagram.series.push_back(std::move(wanted));
  if (!notCounted.x.empty()) diagram.series.push_back(std::move(notCounted));
  if (!below.x.empty()) diagram.series.push_back(std::move(below));
  std::stable_sort(diagram.stops.begin(), diagram.stops.end(),
                   [](const Stop& one, const Stop& other) { return one.x < other.x; });
}

void DiagramParts::AddObtained(Diagram& diagram) const {
  for (const FitCurves* const curves : shown_) {
    const bool isHidden = IsHidden(curves->name);
    Series series = {LegendText(*curves), RoleOf(curves->role), {}, {}, curves->isPale};
    if (!isHidden) {
      series.x = InUnit(curves->megahertz);
      series.y = Levels(HasPoints() ? curves->obtained : curves->magnitude);
    }
    diagram.series.push_back(std::move(series));
    if (!choices_.showsPlainMagnitude || !HasPoints() || isHidden) continue;
    diagram.series.push_back({curves->name + ", |H| alone", SeriesRole::plainMagnitude,
                              InUnit(curves->megahertz), Levels(curves->magnitude)});
  }
}

void DiagramParts::AddInput(Diagram& diagram) const {
  const PassbandFit& points = shown_.front()->passband;
  const bool isFlat =
      std::all_of(points.yin.begin(), points.yin.end(), [](double yin) { return yin == 1; });
  if (isFlat) return;
  const std::vector<double>& megahertz = shown_.front()->megahertz;
  diagram.series.push_back(
      {"Yin", SeriesRole::input, InUnit(megahertz), Levels(shown_.front()->h->Inputs(megahertz))});
}

/// On |H| itself: where Yin |H| ends, they stand only when |H| is shown.
void DiagramParts::AddSidelobes(Diagram& diagram) const {
  if (HasPoints() && !choices_.showsPlainMagnitude) return;
  Series peaks = {"", SeriesRole::sidelobe, {}, {}};
  for (const SidelobePeak& peak : shown_.front()->sidelobes) {
    if (peak.megahertz > range_.to) continue;
    peaks.x.push_back(peak.megahertz * unit_.factor);
    peaks.y.push_back(Level(peak.magnitude));
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
    for (const double value : series.y) smallest = std::min(smallest, value);
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
  FindLevelAxis(diagram);
  PlaceBelowAxis(diagram);
  diagram.verticals.push_back(shown_.front()->h->FreqNorm() * unit_.factor);
  if (choices_.isLogFrequency && range_.from <= 0) {
    diagram.note = "f = 0 has no place on a logarithmic axis";
  }
  std::string names = HasPoints() ? "wanted" : "";
  for (const FitCurves* const curves : shown_) {
    names += (names.empty() ? "" : curves == shown_.back() ? " and " : ", ") + curves->name;
  }
  diagram.sentence =
      names + ", " + Figure(range_.from * unit_.factor, 4) + " to " + FrequencyText(range_.to);
  const FitCurves& last = *shown_.back();
  const WorstRow worst = WorstOf(last.passband.decibels, last.passband.frequency);
  if (worst.row > 0) {
    diagram.sentence += ", worst error " + DecibelFigure(std::abs(worst.value)) + " dB at " +
                        FrequencyText(worst.megahertz);
  }
  diagram.sentence += ", " + CountSentence();
}

std::string DiagramParts::CountSentence() const {
  const int poles = PoleCountOf(*shown_.back());
  const int zeros = ZeroCountOf(*shown_.back());
  return std::to_string(poles) + (poles == 1 ? " pole, " : " poles, ") + std::to_string(zeros) +
         (zeros == 1 ? " zero" : " zeros");
}

const std::vector<double>& DiagramParts::ErrorsOf(const FitCurves& curves) const {
  return choices_.isLinear ? curves.passband.weighted : curves.passband.decibels;
}

void DiagramParts::DrawErrors(Diagram& diagram) const {
  diagram.x = FrequencyAxis();
  diagram.y.label = choices_.isLinear ? "e / Ymax" : "error, dB";
  diagram.horizontals.push_back(0);
  for (const FitCurves* const curves : shown_) {
    if (IsHidden(curves->name)) continue;
    diagram.series.push_back(
        {"", RoleOf(curves->role), InUnit(curves->passband.frequency), ErrorsOf(*curves)});
    diagram.series.back().isPale = curves->isPale;
  }
  const FitCurves& last = *shown_.back();
  const WorstRow worst = WorstOf(ErrorsOf(last), last.passband.frequency);
  if (worst.row > 0) {
    diagram.series.push_back(
        {"", SeriesRole::worst, {worst.megahertz * unit_.factor}, {worst.value}});
    diagram.note = (choices_.isLinear ? Figure(std::abs(worst.value), 3)
                                      : DecibelFigure(std::abs(worst.value)) + " dB") +
                   ", " + FrequencyText(worst.megahertz) + ", row " + std::to_string(worst.row);
  }
  diagram.sentence = diagram.note.empty() ? "no error" : "worst error " + diagram.note;
  FitAxis(diagram.series, diagram.y);
  const double size = std::max(std::abs(diagram.y.from), std::abs(diagram.y.to));
  diagram.y.from = -size;
  diagram.y.to = size;
  const std::vector<double>& errors = ErrorsOf(last);
  for (std::size_t i = 0; i < errors.size(); ++i) {
    diagram.stops.push_back(
        {last.passband.frequency[i] * unit_.factor, std::isnan(errors[i]) ? 0 : errors[i], i});
  }
  std::stable_sort(diagram.stops.begin(), diagram.stops.end(),
                   [](const Stop& one, const Stop& other) { return one.x < other.x; });
}

void DiagramParts::AddPlainCurves(Diagram& diagram, const std::vector<double> FitCurves::*values,
                                  double factor) const {
  diagram.x = FrequencyAxis();
  for (const FitCurves* const curves : shown_) {
    if (IsHidden(curves->name)) continue;
    Series series = {curves->name, RoleOf(curves->role), {}, {}, curves->isPale};
    for (std::size_t i = 0; i < curves->megahertz.size(); ++i) {
      if (curves->megahertz[i] < range_.from || curves->megahertz[i] > range_.to) continue;
      series.x.push_back(curves->megahertz[i] * unit_.factor);
      series.y.push_back((curves->*values)[i] * factor);
    }
    diagram.series.push_back(std::move(series));
  }
}

void DiagramParts::DrawDelay(Diagram& diagram) const {
  double largest = 0;
  for (const FitCurves* const curves : shown_) {
    for (const double value : curves->delay) {
      if (std::isfinite(value)) largest = std::max(largest, std::abs(value));
    }
  }
  const Unit unit = TimeUnit(largest);
  diagram.y.label = std::string("delay, ") + unit.name;
  AddPlainCurves(diagram, &FitCurves::delay, unit.factor);
  const FitCurves& last = *shown_.back();
  if (last.delayPoints.frequency.empty()) {
    diagram.sentence = "group delay of H, " + CountSentence();
  } else {
    for (Series& series : diagram.series) series.name += ", H";
    const auto add = [&](const char* name, SeriesRole role, const std::vector<double>& values) {
      Series series = {name, role, InUnit(last.delayPoints.frequency), values};
      for (double& value : series.y) value *= unit.factor;
      diagram.series.push_back(std::move(series));
    };
    add("TX", SeriesRole::input, last.delayPoints.tx);
    add("total", SeriesRole::wanted, last.delayPoints.total);
    const double constant = last.h->DelayConstant() * unit.factor;
    diagram.series.push_back(
        {"T0", SeriesRole::constant, {diagram.x.from, diagram.x.to}, {constant, constant}});
    const auto& total = last.delayPoints.total;
    const auto [least, most] = std::minmax_element(total.begin(), total.end());
    diagram.note = "T0 " + TimeText(last.h->DelayConstant()) + ", ripple " +
                   TimeText(*most - *least) + " peak to peak";
    diagram.sentence = "group delay, " + diagram.note;
    for (std::size_t i = 0; i < total.size(); ++i) {
      diagram.stops.push_back(
          {last.delayPoints.frequency[i] * unit_.factor, total[i] * unit.factor, i});
    }
  }
  FitAxis(diagram.series, diagram.y);
  MakeRoomForNote(diagram);
}

void DiagramParts::DrawPhase(Diagram& diagram) const {
  diagram.y.label = "phase, degrees";
  AddPlainCurves(diagram, &FitCurves::phase, 1);
  FitAxis(diagram.series, diagram.y);
  diagram.sentence = "phase of H, " + CountSentence();
}

void DiagramParts::DrawStep(Diagram& diagram) const {
  const FitCurves& last = *shown_.back();
  double longest = 0;
  for (const FitCurves* const curves : shown_) {
    longest = std::max(longest, curves->step.nanoseconds.back());
  }
  const Unit unit = TimeUnit(longest);
  diagram.y.label = "step response";
  diagram.x = {std::string("time, ") + unit.name, 0, 0};
  for (const FitCurves* const curves : shown_) {
    if (IsHidden(curves->name)) continue;
    const StepResponse step = OverTime(*curves, longest);
    Series series = {curves->name, RoleOf(curves->role), step.nanoseconds, step.values,
                     curves->isPale};
    for (double& value : series.x) value *= unit.factor;
    diagram.x.to = std::max(diagram.x.to, series.x.back());
    diagram.series.push_back(std::move(series));
  }
  diagram.horizontals.push_back(last.step.final);
  diagram.series.push_back({"", SeriesRole::constant, {0}, {0}});
  FitAxis(diagram.series, diagram.y);
  diagram.series.pop_back();
  if (last.step.jump != 0) diagram.note = "jumps to " + Figure(last.step.jump, 4) + " at t = 0";
  MakeRoomForNote(diagram);
  const auto most = std::max_element(last.step.values.begin(), last.step.values.end());
  diagram.sentence =
      "step response, ends at " + Figure(last.step.final, 4) + ", largest " + Figure(*most, 4);
  if (!diagram.note.empty()) diagram.sentence += ", " + diagram.note;
}

}  // namespace polefit

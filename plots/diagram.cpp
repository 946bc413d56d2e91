#include "plots/diagram.h"

#include <algorithm>
#include <cmath>

#include "plots/diagram_parts.h"
#include "plots/units.h"

namespace polefit {

bool Series::IsLine() const {
  switch (role) {
    case SeriesRole::input:
    case SeriesRole::typed:
    case SeriesRole::preview:
    case SeriesRole::result:
    case SeriesRole::other:
    case SeriesRole::another:
    case SeriesRole::plainMagnitude:
    case SeriesRole::constant:
      return true;
    default:
      return false;
  }
}

namespace {

/// Axes without figures.
Diagram EmptyDiagram(DiagramKind kind, const DiagramChoices& choices) {
  Diagram diagram;
  diagram.kind = kind;
  diagram.hasFigures = false;
  diagram.sentence = "no curve";
  diagram.x.label = kind == DiagramKind::poles  ? "real part, normalised"
                    : kind == DiagramKind::step ? "time"
                                                : "frequency";
  switch (kind) {
    case DiagramKind::magnitude:
      diagram.y.label = choices.isLinear ? "magnitude" : "magnitude, dB";
      diagram.note = "the curves come when points and poles are typed";
      break;
    case DiagramKind::error:
      diagram.y.label = "error";
      break;
    case DiagramKind::poles:
      diagram.y.label = "imaginary part";
      break;
    case DiagramKind::delay:
      diagram.y.label = "delay";
      break;
    case DiagramKind::phase:
      diagram.y.label = "phase, degrees";
      break;
    default:
      diagram.y.label = "step response";
      break;
  }
  return diagram;
}

/// From left to right, without those that a logarithmic axis has no place for, which the sentence
/// tells. Locations keep the order of the answers.
void OrderStops(Diagram& diagram) {
  if (diagram.kind == DiagramKind::poles) return;
  if (diagram.x.isLogarithmic) {
    const auto left = std::erase_if(diagram.stops, [](const Stop& stop) { return stop.x <= 0; });
    if (left > 0) diagram.sentence += std::string(", ") + kNoZero;
  }
  if (std::ranges::is_sorted(diagram.stops, {}, &Stop::x)) return;
  std::ranges::stable_sort(diagram.stops, {}, &Stop::x);
}

}  // namespace

Diagram MakeDiagram(DiagramKind kind, const ShownCurves& shown, const DiagramChoices& choices) {
  const bool hasCurves = !shown.empty() && !shown.front()->isPointsAlone;
  if (shown.empty() || (!hasCurves && kind != DiagramKind::magnitude)) {
    return EmptyDiagram(kind, choices);
  }
  Diagram diagram;
  diagram.kind = kind;
  const DiagramParts parts(shown, choices);
  switch (kind) {
    case DiagramKind::magnitude:
      parts.DrawMagnitude(diagram);
      break;
    case DiagramKind::error:
      parts.DrawErrors(diagram);
      break;
    case DiagramKind::poles:
      parts.DrawPoles(diagram);
      break;
    case DiagramKind::delay:
      parts.DrawDelay(diagram);
      break;
    case DiagramKind::phase:
      parts.DrawPhase(diagram);
      break;
    default:
      parts.DrawStep(diagram);
      break;
  }
  OrderStops(diagram);
  MarkResults(diagram);
  return diagram;
}

namespace {

std::string Level(double value, bool isLinear) {
  if (isLinear) return Figure(value, 5);
  if (value <= 0) return "0";
  return DecibelFigure(20 * std::log10(value)) + " dB";
}

std::string RowText(std::size_t row, double megahertz) {
  return "row " + std::to_string(row + 1) + ": " + FrequencyText(megahertz);
}

/// What one set of curves has at a row of the points; nothing where it has no such row.
std::string ObtainedText(std::size_t row, const FitCurves& curves, const PassbandFit& points,
                         bool isLinear) {
  if (curves.isPointsAlone || !HasRow(curves, row, points.frequency[row])) return {};
  std::string text = ", " + curves.name + " " + Level(curves.passband.obtained[row], isLinear);
  const double error = isLinear ? curves.passband.weighted[row] : curves.passband.decibels[row];
  // Against another wanted value it would say nothing beside this one.
  if (std::isnan(error) || curves.passband.yout[row] != points.yout[row]) return text;
  return text +
         (isLinear ? ", error " + Figure(error, 3) : ", error " + DecibelFigure(error) + " dB");
}

/// All of it, then the main curves alone, then these without what is wanted.
std::vector<std::string> PointTexts(std::size_t row, const ShownCurves& shown,
                                    const DiagramChoices& choices) {
  const PassbandFit& points = shown.front()->passband;
  const auto obtained = [&](const FitCurves& curves) {
    return ObtainedText(row, curves, points, choices.isLinear);
  };
  const std::string place = RowText(row, points.frequency[row]);
  const std::string wanted = ", wanted " + Level(points.yout[row], choices.isLinear);
  std::string all;
  for (const FitCurves* const curves : shown) {
    if (!IsHidden(*curves, choices)) all += obtained(*curves);
  }
  const FitCurves& main = MainCurves(shown, choices);
  const std::string last = IsHidden(main, choices) ? "" : obtained(main);
  if (last.empty()) return {place + wanted + all};
  return {place + wanted + all, place + wanted + last, place + last};
}

/// All of it, then the sum alone.
std::vector<std::string> DelayTexts(std::size_t row, const ShownCurves& shown,
                                    const DiagramChoices& choices) {
  const FitCurves& main = MainCurves(shown, choices);
  const DelayFit& points = main.delayPoints;
  const std::string whose = shown.size() == 1 ? "" : main.name + ", ";
  const std::string place = RowText(row, points.frequency[row]) + ", ";
  const std::string sum =
      "total " + TimeText(points.total[row]) + ", error " + TimeText(points.error[row]);
  return {place + "TX " + TimeText(points.tx[row]) + ", " + whose + "H " +
              TimeText(points.own[row]) + ", " + sum,
          place + whose + sum};
}

std::string CurveValue(DiagramKind kind, const FitCurves& curves, double megahertz, bool isLinear) {
  switch (kind) {
    case DiagramKind::delay:
      return TimeText(curves.h->GroupDelays({megahertz})[0]);
    case DiagramKind::phase:
      return Figure(curves.h->Phases({megahertz})[0], 5) + " degrees";
    default:
      return Level(curves.h->Magnitudes({megahertz})[0], isLinear);
  }
}

/// What H has at a row, or at a step along the curve where there are no rows: of all, then of the
/// main curves alone.
std::vector<std::string> CurveTexts(const Diagram& diagram, std::size_t index,
                                    const ShownCurves& shown, const DiagramChoices& choices) {
  const FitCurves& main = MainCurves(shown, choices);
  const bool isRow = diagram.stopKind == StopKind::passbandRow;
  const double megahertz = isRow ? shown.front()->passband.frequency[index] : main.megahertz[index];
  const auto valueOf = [&](const FitCurves& curves) {
    if (IsHidden(curves, choices)) return std::string();
    return ", " + curves.name + " " + CurveValue(diagram.kind, curves, megahertz, choices.isLinear);
  };
  const std::string place = isRow ? RowText(index, megahertz) : FrequencyText(megahertz);
  std::string all = place;
  for (const FitCurves* const curves : shown) all += valueOf(*curves);
  return {all, place + valueOf(main)};
}

}  // namespace

std::string LocationText(const FitCurves& curves, std::size_t location) {
  const Location& at = curves.locations[location];
  const double distance = std::hypot(at.real, at.imaginary);
  std::string text = at.kind == FactorKind::polePair ? "pair" : ShortName(at.kind);
  if (at.kind != FactorKind::sigmaZero) text += " " + std::to_string(at.number + 1);
  text += ": ";
  if (at.kind != FactorKind::omegaZero) {
    text += (at.onBothSides ? "\u00b1" + Figure(std::abs(at.real), 4) : Figure(at.real, 4));
  }
  const bool isPair = IsPair(at.kind);
  if (isPair) text += " + ";
  if (isPair || at.kind == FactorKind::omegaZero) text += "j" + Figure(at.imaginary, 4);
  text += ", " + FrequencyText(Rounded4(distance * curves.h->FreqNorm()));
  if (isPair && at.imaginary > 0) text += ", Q " + Figure(distance / (2 * std::abs(at.real)), 3);
  if (at.isHeld) text += ", held";
  return text;
}

namespace {

std::string TextAmongCurves(const Stop& stop, const ShownCurves& shown) {
  if (stop.curve >= shown.size() || stop.index >= shown[stop.curve]->locations.size()) return {};
  const FitCurves& curves = *shown[stop.curve];
  const Location& at = curves.locations[stop.index];
  const std::string text =
      stop.isMirror && at.bringsPole
          ? std::string("own pole of the ") + ShortName(at.kind) + ": " + Figure(-at.real, 4) +
                ", " + FrequencyText(Rounded4(std::abs(at.real) * curves.h->FreqNorm()))
          : LocationText(curves, stop.index);
  return shown.size() == 1 ? text : shown[stop.curve]->name + ", " + text;
}

}  // namespace

std::vector<std::string> StopTexts(const Diagram& diagram, std::size_t stop,
                                   const ShownCurves& shown, const DiagramChoices& choices) {
  if (stop >= diagram.stops.size() || shown.empty()) return {};
  const std::size_t index = diagram.stops[stop].index;
  if (diagram.kind == DiagramKind::step) return StepTexts(diagram, index, shown, choices);
  if (diagram.stopKind == StopKind::location) return {TextAmongCurves(diagram.stops[stop], shown)};
  if (diagram.stopKind == StopKind::delayRow) return DelayTexts(index, shown, choices);
  const bool isWanted =
      diagram.kind == DiagramKind::magnitude || diagram.kind == DiagramKind::error;
  if (isWanted && diagram.stopKind == StopKind::passbandRow) {
    return PointTexts(index, shown, choices);
  }
  return CurveTexts(diagram, index, shown, choices);
}

std::string StopText(const Diagram& diagram, std::size_t stop, const ShownCurves& shown,
                     const DiagramChoices& choices) {
  const std::vector<std::string> texts = StopTexts(diagram, stop, shown, choices);
  return texts.empty() ? std::string() : texts.front();
}

}  // namespace polefit

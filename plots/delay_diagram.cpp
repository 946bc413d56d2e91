// Group delay and phase.

#include <algorithm>
#include <cmath>

#include "plots/diagram_parts.h"

namespace polefit {

void DiagramParts::AddPlainCurves(Diagram& diagram, const std::vector<double> FitCurves::*values,
                                  double factor) const {
  diagram.x = FrequencyAxis();
  for (const FitCurves* const curves : shown_) {
    if (!IsSeen(*curves)) continue;
    Series series = {curves->name, RoleOf(curves->role), {}, {}, curves->isPale};
    for (std::size_t i = 0; i < curves->megahertz.size(); ++i) {
      if (curves->megahertz[i] < range_.from || curves->megahertz[i] > range_.to) continue;
      series.x.push_back(curves->megahertz[i] * unit_.factor);
      series.y.push_back((curves->*values)[i] * factor);
    }
    diagram.series.push_back(std::move(series));
  }
  std::vector<double> along = main_.*values;
  for (double& value : along) value *= factor;
  AddStopsAlong(diagram, along);
}

void DiagramParts::DrawDelay(Diagram& diagram) const {
  double largest = 0;
  for (const FitCurves* const curves : shown_) {
    for (const double value : curves->delay) {
      if (std::isfinite(value)) largest = std::max(largest, std::abs(value));
    }
  }
  const Unit unit = UnitOfTimes(largest);
  diagram.y.label = std::string("delay, ") + unit.name;
  AddPlainCurves(diagram, &FitCurves::delay, unit.factor);
  if (main_.delayPoints.frequency.empty()) {
    diagram.sentence = "group delay of H, " + CountSentence();
  } else {
    for (Series& series : diagram.series) series.name += ", H";
    AddTotalDelay(diagram, unit);
  }
  FitAxis(diagram.series, diagram.y);
}

/// What is to be equalised, what becomes of it, and the constant that it comes near to.
void DiagramParts::AddTotalDelay(Diagram& diagram, const Unit& unit) const {
  const DelayFit& rows = main_.delayPoints;
  const auto add = [&](const std::string& name, SeriesRole role,
                       const std::vector<double>& values) {
    Series series = {name, role, InUnit(rows.frequency), values};
    for (double& value : series.y) value *= unit.factor;
    diagram.series.push_back(std::move(series));
  };
  const auto [least, most] = std::ranges::minmax_element(rows.total);
  const std::string ripple = "ripple " + TimeText(*most - *least);
  const std::string level = TimeText(main_.h->DelayConstant());
  add("TX", SeriesRole::input, rows.tx);
  add("total, " + ripple, SeriesRole::wanted, rows.total);
  const double constant = main_.h->DelayConstant() * unit.factor;
  diagram.series.push_back(
      {"T0, " + level, SeriesRole::constant, {diagram.x.from, diagram.x.to}, {constant, constant}});
  diagram.sentence = "group delay, T0 " + level + ", " + ripple + " peak to peak";
  diagram.stopKind = StopKind::delayRow;
  diagram.stops.clear();
  for (std::size_t i = 0; i < rows.total.size(); ++i) {
    diagram.stops.push_back({rows.frequency[i] * unit_.factor, rows.total[i] * unit.factor, i});
  }
}

void DiagramParts::DrawPhase(Diagram& diagram) const {
  diagram.y.label = "phase, degrees";
  AddPlainCurves(diagram, &FitCurves::phase, 1);
  FitAxis(diagram.series, diagram.y);
  diagram.sentence = "phase of H, " + CountSentence();
}

}  // namespace polefit

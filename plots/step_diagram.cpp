#include <algorithm>

#include "plots/diagram_parts.h"

namespace polefit {

namespace {

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

void DiagramParts::DrawStep(Diagram& diagram) const {
  const FitCurves& last = *shown_.back();
  double longest = 0;
  for (const FitCurves* const curves : shown_) {
    longest = std::max(longest, curves->step.nanoseconds.back());
  }
  const Unit unit = UnitOfTimes(longest);
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

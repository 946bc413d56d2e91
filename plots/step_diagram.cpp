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

/// In ns.
double LongestStep(const ShownCurves& shown) {
  double longest = 0;
  for (const FitCurves* const curves : shown) {
    longest = std::max(longest, curves->step.nanoseconds.back());
  }
  return longest;
}

/// Room for the note over the curves.
void MakeRoomForNote(Diagram& diagram) {
  constexpr double kShare = .14;
  if (!diagram.note.empty()) diagram.y.to += kShare * (diagram.y.to - diagram.y.from);
}

}  // namespace

void DiagramParts::DrawStep(Diagram& diagram) const {
  const double longest = LongestStep(shown_);
  const Unit unit = UnitOfTimes(longest);
  diagram.y.label = "step response";
  diagram.x = {std::string("time, ") + unit.name, 0, 0};
  for (const FitCurves* const curves : shown_) {
    if (!IsSeen(*curves)) continue;
    const StepResponse step = OverTime(*curves, longest);
    Series series = {curves->name, RoleOf(curves->role), step.nanoseconds, step.values,
                     curves->isPale};
    for (double& value : series.x) value *= unit.factor;
    diagram.x.to = std::max(diagram.x.to, series.x.back());
    if (curves == &main_) {
      diagram.stops.clear();
      for (std::size_t i = 0; i < series.x.size(); ++i) {
        diagram.stops.push_back({series.x[i], series.y[i], i});
      }
    }
    diagram.series.push_back(std::move(series));
  }
  diagram.horizontals.push_back(main_.step.final);
  diagram.series.push_back({"", SeriesRole::constant, {0}, {0}});
  FitAxis(diagram.series, diagram.y);
  diagram.series.pop_back();
  if (main_.step.jump != 0) diagram.note = "jumps to " + Figure(main_.step.jump, 4) + " at t = 0";
  MakeRoomForNote(diagram);
  const double most = std::ranges::max(main_.step.values);
  diagram.sentence =
      "step response, ends at " + Figure(main_.step.final, 4) + ", largest " + Figure(most, 4);
  if (!diagram.note.empty()) diagram.sentence += ", " + diagram.note;
}

std::vector<std::string> StepTexts(const Diagram& diagram, std::size_t index,
                                   const ShownCurves& shown, const DiagramChoices& choices) {
  const auto steps = static_cast<double>(shown.front()->step.values.size() - 1);
  const std::string place = TimeText(LongestStep(shown) * static_cast<double>(index) / steps);
  const std::string& chief = MainCurves(shown, choices).name;
  std::string all = place;
  std::string main = place;
  for (const Series& series : diagram.series) {
    if (!series.IsLine() || series.name.empty()) continue;
    const std::string value = ", " + series.name + " " + Figure(series.y[index], 4);
    all += value;
    if (series.name == chief) main += value;
  }
  return {all, main};
}

}  // namespace polefit

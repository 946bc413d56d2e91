#include <algorithm>
#include <cmath>

#include "plots/diagram_parts.h"

namespace polefit {

const std::vector<double>& DiagramParts::ErrorsOf(const FitCurves& curves) const {
  return choices_.isLinear ? curves.passband.weighted : curves.passband.decibels;
}

void DiagramParts::DrawErrors(Diagram& diagram) const {
  diagram.x = FrequencyAxis();
  diagram.y.label = choices_.isLinear ? "e / Ymax" : "error, dB";
  diagram.horizontals.push_back(0);
  diagram.hasFigures = HasPoints();
  const auto add = [&](const FitCurves& curves) {
    diagram.series.push_back(
        {"", RoleOf(curves.role), InUnit(curves.passband.frequency), ErrorsOf(curves)});
    diagram.series.back().isPale = curves.isPale;
  };
  for (const FitCurves* const curves : shown_) {
    if (IsSeen(*curves) && curves != &main_) add(*curves);
  }
  // Over the others, with marks at the rows that are read out.
  if (IsSeen(main_)) add(main_);
  const std::vector<double>& errors = ErrorsOf(main_);
  const std::vector<double>& megahertz = main_.passband.frequency;
  const WorstRow worst = WorstOf(errors, megahertz);
  if (worst.row > 0 && IsSeen(main_)) {
    diagram.series.push_back(
        {"", SeriesRole::worst, {worst.megahertz * unit_.factor}, {worst.value}});
    diagram.note = (choices_.isLinear ? Figure(std::abs(worst.value), 3)
                                      : DecibelFigure(std::abs(worst.value)) + " dB") +
                   ", " + FrequencyText(worst.megahertz) + ", row " + std::to_string(worst.row);
  }
  diagram.sentence = diagram.note.empty() ? "no error" : "worst error " + diagram.note;
  // What the note tells of sets the scale: start values are often a hundred times worse.
  FitAxis({{"", RoleOf(main_.role), InUnit(megahertz), errors}}, diagram.y);
  // Room for the mark of the worst row.
  constexpr double kRoom = 1.15;
  const double size = kRoom * std::max(std::abs(diagram.y.from), std::abs(diagram.y.to));
  diagram.y.from = -size;
  diagram.y.to = size;
  diagram.stopKind = StopKind::passbandRow;
  for (std::size_t i = 0; i < errors.size(); ++i) {
    // A result may have had other rows than the table has now.
    if (!HasRow(*shown_.front(), i, megahertz[i])) continue;
    diagram.stops.push_back(
        {megahertz[i] * unit_.factor, std::isnan(errors[i]) ? 0 : errors[i], i});
  }
}

}  // namespace polefit

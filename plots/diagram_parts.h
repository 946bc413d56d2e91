#pragma once

#include <string>
#include <vector>

#include "plots/diagram.h"
#include "plots/units.h"

namespace polefit {

inline constexpr const char* kNoZero = "f = 0 has no place on a logarithmic axis";

/// A number with four significant digits.
double Rounded4(double value);

/// Whether the passband point at `row`, from 0, has this frequency.
bool HasRow(const FitCurves& curves, std::size_t row, double megahertz);

bool IsHidden(const FitCurves& curves, const DiagramChoices& choices);

/// The curves that figures are told of, among those that are not hidden: the last of what is typed,
/// its preview and its result, else of earlier runs. With all hidden the typed ones.
const FitCurves& MainCurves(const ShownCurves& shown, const DiagramChoices& choices);

/// "12.5 ns, typed 0.93": a step of the step responses that are drawn, of all, then of the main
/// curve alone.
std::vector<std::string> StepTexts(const Diagram& diagram, std::size_t index,
                                   const ShownCurves& shown, const DiagramChoices& choices);

/// Draws each kind of diagram of at least one set of curves; all frequency diagrams on one axis.
class DiagramParts {
 public:
  DiagramParts(const ShownCurves& shown, const DiagramChoices& choices);

  void DrawMagnitude(Diagram& diagram) const;
  void DrawErrors(Diagram& diagram) const;
  void DrawPoles(Diagram& diagram) const;
  void DrawDelay(Diagram& diagram) const;
  void DrawPhase(Diagram& diagram) const;
  void DrawStep(Diagram& diagram) const;

 private:
  bool HasPoints() const { return !shown_.front()->passband.frequency.empty(); }
  bool IsSeen(const FitCurves& curves) const { return !IsHidden(curves, choices_); }
  Axis FrequencyAxis() const;
  std::vector<double> InUnit(const std::vector<double>& megahertz) const;
  double Level(double value) const;
  std::vector<double> Levels(std::vector<double> values) const;
  void AddWanted(Diagram& diagram) const;
  void AddObtained(Diagram& diagram) const;
  void AddInput(Diagram& diagram) const;
  void AddSidelobes(Diagram& diagram) const;
  void FindLevelAxis(Diagram& diagram) const;
  void PlaceBelowAxis(Diagram& diagram) const;
  void SayMagnitude(Diagram& diagram) const;
  void AddPlainCurves(Diagram& diagram, const std::vector<double> FitCurves::*values,
                      double factor) const;
  void AddTotalDelay(Diagram& diagram, const Unit& unit) const;
  void AddStopsAlong(Diagram& diagram, const std::vector<double>& values) const;
  const std::vector<double>& ErrorsOf(const FitCurves& curves) const;
  std::string CountSentence() const;

  const ShownCurves& shown_;
  const DiagramChoices& choices_;
  const FitCurves& main_;
  FrequencyRange range_;
  Unit unit_;
};

/// The curve's name and its rms error, for the legend.
std::string LegendText(const FitCurves& curves);

SeriesRole RoleOf(CurveRole role);

/// Round marks along the lines of results, evenly over the axis: so they can be told in grey too.
void MarkResults(Diagram& diagram);

/// Widens the axis to hold all values that are not NaN, with a margin; a flat line gets a range
/// too.
void FitAxis(const std::vector<Series>& series, Axis& axis);

}  // namespace polefit

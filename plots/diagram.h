#pragma once

#include <string>
#include <vector>

#include "plots/fit_curves.h"

namespace polefit {

enum class DiagramKind { magnitude, error, poles, delay, phase, step, orders };

/// What a series stands for. It fixes its line style and colour.
enum class SeriesRole {
  wanted,
  notCounted,  ///< wanted, with the weight 0
  belowAxis,   ///< wanted 0, at the lower edge
  input,
  typed,
  preview,
  result,
  resultMarks,  ///< along the line of a result
  other,
  another,         ///< a second one of these
  plainMagnitude,  ///< |H| alone
  constant,        ///< T0, or the gain that a step ends at
  worst,
  sidelobe,
  poles,
  zeros,
  ghostPoles,  ///< those of the other curves
  ghostZeros
};

/// One curve, or one set of marks.
struct Series {
  std::string name;  ///< for the legend; empty: not in it
  SeriesRole role = SeriesRole::typed;
  std::vector<double> x;
  std::vector<double> y;  ///< NaN breaks the line
  bool isPale = false;
  /// The line that locations belong to, whose colour they have.
  SeriesRole curve = SeriesRole::typed;

  bool IsLine() const;
};

/// What an axis shows, in the unit of its label.
struct Axis {
  std::string label;
  double from = 0;
  double to = 1;
  bool isLogarithmic = false;
};

/// What the stops of a diagram stand for.
enum class StopKind {
  passbandRow,
  delayRow,
  location,
  sample  ///< a step along the curve of H
};

/// A place that the keys step to and the mouse finds, and what it stands for.
struct Stop {
  double x = 0;
  double y = 0;
  /// The row of the points, the location or the step along the curve, from 0.
  std::size_t index = 0;
  std::size_t curve = 0;  ///< whose location it is, among the shown ones
  bool isMirror = false;  ///< the location's image right of the omega axis, or its own pole
};

/// A rectangle of allowed locations.
struct Frame {
  double left = 0;
  double right = 0;
  double bottom = 0;
  double top = 0;
};

/// How far a location can be trusted: its centre and half axes.
struct Ellipse {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  SeriesRole curve = SeriesRole::typed;  ///< as in Series
};

/// What one diagram shows, ready to be drawn.
struct Diagram {
  DiagramKind kind = DiagramKind::magnitude;
  Axis x;
  Axis y;
  bool hasEqualScales = false;
  bool hasFigures = true;  ///< at its axes; an empty diagram has none
  std::vector<Series> series;
  /// Dotted lines from edge to edge.
  std::vector<double> verticals;
  std::vector<double> horizontals;
  std::vector<Frame> frames;
  std::vector<Ellipse> ellipses;
  StopKind stopKind = StopKind::sample;
  std::vector<Stop> stops;  ///< ascending in x, but in the order of the locations among the poles
  std::string note;         ///< stands in the diagram: why something is not drawn, the worst row
  std::string sentence;     ///< all in one sentence, for those who do not see it
  std::string brief;        ///< the chief part of it, for little room; empty: it is short
};

/// What the user has chosen.
struct DiagramChoices {
  bool isLinear = false;
  bool isLogFrequency = false;
  bool showsPlainMagnitude = false;
  std::vector<std::string> hidden;  ///< names of curves
};

/// The curves that are shown: the typed answers first, where there are any, then the others.
using ShownCurves = std::vector<const FitCurves*>;

/// One diagram of the curves; of none it is empty.
Diagram MakeDiagram(DiagramKind kind, const ShownCurves& shown, const DiagramChoices& choices);

/// "row 12: 5.5 MHz, wanted -5.85 dB, typed -5.83 dB, error 0.02 dB", "75 ns, typed 0.93" or
/// "pair 2: -0.293 + j0.625, 13.8 MHz, Q 1.18"; of the curves that are not hidden.
std::string StopText(const Diagram& diagram, std::size_t stop, const ShownCurves& shown,
                     const DiagramChoices& choices);

/// The same, then shorter ones for little room: the last of the curves alone.
std::vector<std::string> StopTexts(const Diagram& diagram, std::size_t stop,
                                   const ShownCurves& shown, const DiagramChoices& choices);

/// "pair 2: -0.293 + j0.625, 13.8 MHz, Q 1.18"
std::string LocationText(const FitCurves& curves, std::size_t location);

}  // namespace polefit

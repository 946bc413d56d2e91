#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "record/finding.h"
#include "record/response_record.h"
#include "solver/model/step_response.h"
#include "solver/model/transfer_function.h"

namespace polefit {

/// Whose curve it is; each has a line style of its own.
enum class CurveRole { typed, preview, result, other, another };

/// A sidelobe's peak: where it is, and |H| there.
struct SidelobePeak {
  double megahertz;
  double magnitude;
};

/// One standard deviation of a location's parts, normalised; 0 for a part that the points do not
/// determine, or that is held.
struct Deviation {
  double real = 0;
  double imaginary = 0;
};

/// All curves of one set of answers.
struct FitCurves {
  CurveRole role = CurveRole::typed;
  std::string name;            ///< "typed", "result 19:40"
  bool isPale = false;         ///< it no longer belongs to what is typed
  bool isPointsAlone = false;  ///< there are the points, and H(s) only stands in
  std::shared_ptr<const Problem> problem;
  std::optional<TransferFunction> h;

  PassbandFit passband;
  DelayFit delayPoints;
  std::vector<Location> locations;
  /// How locations stand in the answers: the word of `locations[i]` in its list, from 0.
  std::vector<std::size_t> words;
  /// An entry a location; none for typed answers.
  std::vector<Deviation> deviations;
  std::vector<SidelobePeak> sidelobes;
  StepResponse step;

  /// Even steps over the points and on to the sidelobes, logarithmic ones, and more where |H|
  /// bends; MHz, ascending.
  std::vector<double> megahertz;
  std::vector<double> magnitude;
  std::vector<double> obtained;  ///< Yin |H|, NaN outside of the points
  std::vector<double> delay;     ///< of H, in ns
  std::vector<double> phase;     ///< of H, in degrees
};

/// The frequencies, in MHz, over which a record's curves are drawn: those of its points, and up to
/// Freq Norm; without points up to 3 times that. `goesBeyond` goes on to the sidelobes.
struct FrequencyRange {
  double from = 0;
  double to = 0;
};
FrequencyRange RangeOf(const TransferFunction& h, bool goesBeyond);

/// The curves of a record, or nothing where its answers have a fault or H(s) no finite error;
/// `findings` tell why. With no passband points there are those of H alone.
std::optional<FitCurves> CurvesOf(const ResponseRecord& record, CurveRole role,
                                  const std::string& name, std::vector<Finding>& findings);

/// The passband points of a record whose other answers have a fault: everything else is empty.
/// Nothing where the points have one too, or where there are none.
std::optional<FitCurves> PointsAlone(const ResponseRecord& record);

/// Where an error is worst.
struct WorstRow {
  int row = 0;  ///< from 1; 0 when there is none
  double megahertz = 0;
  double value = 0;  ///< with its sign
};
WorstRow WorstOf(const std::vector<double>& errors, const std::vector<double>& megahertz);

}  // namespace polefit

#include "plots/fit_curves.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "plots/location_trust.h"
#include "solver/problem/answers.h"
#include "solver/search/sidelobes.h"

namespace polefit {

namespace {

/// Steps of a whole curve, and those added around the bend that a pair makes.
constexpr int kSteps = 400;
constexpr double kBends[] = {0, .15, .3, .5, .75, 1, 1.5, 2, 3};

void AddSteps(const FrequencyRange& range, int count, std::vector<double>& megahertz) {
  const double span = range.to - range.from;
  for (int i = 0; i <= count; ++i) megahertz.push_back(range.from + span * i / count);
}

/// For a logarithmic axis.
void AddLowSteps(const FrequencyRange& range, std::vector<double>& megahertz) {
  const double low = range.from > 0 ? range.from : range.to / 1000;
  for (int i = 0; i <= kSteps / 4; ++i) {
    megahertz.push_back(low * std::pow(range.to / low, 4.0 * i / kSteps));
  }
}

void AddBends(const TransferFunction& h, const FrequencyRange& range,
              std::vector<double>& megahertz) {
  for (const Location& at : h.Locations()) {
    const double width = at.kind == FactorKind::omegaZero ? .02 * at.imaginary : std::abs(at.real);
    for (const double part : kBends) {
      for (const double sign : {-1.0, 1.0}) {
        const double f = (at.imaginary + sign * part * width) * h.FreqNorm();
        if (f > range.from && f < range.to) megahertz.push_back(f);
      }
    }
  }
}

/// Finest where the points are, however far off the sidelobes.
std::vector<double> CurveFrequencies(const TransferFunction& h) {
  const FrequencyRange points = RangeOf(h, false);
  const FrequencyRange range = RangeOf(h, true);
  std::vector<double> megahertz;
  AddSteps(points, kSteps, megahertz);
  AddSteps({range.from, points.from}, kSteps / 4, megahertz);
  AddSteps({points.to, range.to}, kSteps / 2, megahertz);
  AddLowSteps(range, megahertz);
  AddBends(h, range, megahertz);
  std::sort(megahertz.begin(), megahertz.end());
  const double least = 1e-9 * range.to;
  const auto isSame = [least](double one, double other) { return other - one < least; };
  megahertz.erase(std::unique(megahertz.begin(), megahertz.end(), isSame), megahertz.end());
  return megahertz;
}

/// The omega-axis zeros stand in ascending order in the problem, as typed in the answer; the quads
/// stand behind the zero pairs.
std::vector<std::size_t> WordsOf(const ResponseRecord& record,
                                 const std::vector<Location>& locations) {
  const std::vector<std::string> zeros = Words(record.Slot(slot::kYzero));
  std::vector<std::size_t> order(zeros.size());
  std::iota(order.begin(), order.end(), 0U);
  std::stable_sort(order.begin(), order.end(), [&](std::size_t one, std::size_t other) {
    return ParseNumber(zeros[one]).value_or(0) < ParseNumber(zeros[other]).value_or(0);
  });
  const auto pairs = static_cast<std::size_t>(
      std::count_if(locations.begin(), locations.end(),
                    [](const Location& at) { return at.kind == FactorKind::zeroPair; }));
  std::vector<std::size_t> words;
  for (const Location& at : locations) {
    const bool isOmega = at.kind == FactorKind::omegaZero && at.number < order.size();
    words.push_back(isOmega ? order[at.number]
                            : at.number + (at.kind == FactorKind::zeroQuad ? pairs : 0));
  }
  return words;
}

void FindPeaks(FitCurves& curves) {
  const TransferFunction& h = *curves.h;
  for (const Peak& peak : FindSidelobes(h.GetProblem(), h.Parameters())) {
    if (!std::isfinite(peak.level) || peak.isEnd) continue;
    curves.sidelobes.push_back({peak.frequency * h.FreqNorm(), h.Gain() * std::exp(peak.level)});
  }
}

void Fill(FitCurves& curves) {
  constexpr std::size_t kStepPoints = 401;
  const TransferFunction& h = *curves.h;
  curves.megahertz = CurveFrequencies(h);
  curves.magnitude = h.Magnitudes(curves.megahertz);
  curves.obtained = h.Obtained(curves.megahertz);
  curves.delay = h.GroupDelays(curves.megahertz);
  curves.phase = h.Phases(curves.megahertz);
  curves.passband = h.Passband();
  if (h.WantsDelay()) curves.delayPoints = h.DelayPoints();
  curves.step = SettledStepResponse(h, kStepPoints);
  FindPeaks(curves);
}

}  // namespace

FrequencyRange RangeOf(const TransferFunction& h, bool goesBeyond) {
  constexpr double kBeyond = 3;
  if (!h.HasPoints()) return {0, kBeyond * h.FreqNorm()};
  const auto [least, most] = h.PointRange();
  FrequencyRange range = {least, std::max(most, h.FreqNorm())};
  if (range.from == range.to) range.from = 0;
  if (goesBeyond) range = {0, std::max(range.to, kBeyond * h.FreqNorm())};
  return range;
}

std::optional<FitCurves> CurvesOf(const ResponseRecord& record, CurveRole role,
                                  const std::string& name, std::vector<Finding>& findings) {
  FitCurves curves;
  curves.role = role;
  curves.name = name;
  const bool hasPoints = record.nFreqPoints > 0;
  curves.problem =
      hasPoints ? ReadSharedProblem(record, findings) : ReadSharedConstellation(record, findings);
  if (HasFault(findings)) return std::nullopt;
  curves.h.emplace(*curves.problem);
  if (hasPoints && !curves.h->IsFinite()) return std::nullopt;
  curves.locations = curves.h->Locations();
  curves.words = WordsOf(record, curves.locations);
  if (hasPoints && role != CurveRole::typed) curves.deviations = DeviationsOf(*curves.problem);
  Fill(curves);
  return curves;
}

std::optional<FitCurves> PointsAlone(const ResponseRecord& record) {
  if (record.nFreqPoints == 0) return std::nullopt;
  // A pole that has no fault, and nothing that could have one.
  ResponseRecord pole;
  for (int slot = 1; slot <= kSlotCount; ++slot) pole.Slot(slot) = "0";
  const double freqNorm = ParseNumber(record.Slot(slot::kFreqNorm)).value_or(0);
  pole.Slot(slot::kFreqNorm) = freqNorm > 0 ? record.Slot(slot::kFreqNorm) : "1";
  pole.Slot(slot::kUseWeights) = record.Slot(slot::kUseWeights);
  pole.Slot(slot::kNPoles) = "1 0";
  pole.Slot(slot::kZeroCounts) = "0 0 0";
  for (const int one : {slot::kSigmaPoles, slot::kGain, slot::kMagnVSripple}) pole.Slot(one) = "1";
  pole.Slot(slot::kLowestXY) = ".1";
  pole.Slot(slot::kMaxXY) = "10";
  pole.nFreqPoints = record.nFreqPoints;
  pole.passband = record.passband;
  std::vector<Finding> findings;
  FitCurves points;
  points.isPointsAlone = true;
  points.problem = ReadSharedProblem(pole, findings);
  if (HasFault(findings)) return std::nullopt;
  points.h.emplace(*points.problem);
  points.passband = points.h->Passband();
  return points;
}

WorstRow WorstOf(const std::vector<double>& errors, const std::vector<double>& megahertz) {
  WorstRow worst;
  for (std::size_t i = 0; i < errors.size(); ++i) {
    if (std::isnan(errors[i])) continue;
    if (worst.row > 0 && std::abs(errors[i]) <= std::abs(worst.value)) continue;
    worst = {static_cast<int>(i) + 1, megahertz[i], errors[i]};
  }
  return worst;
}

}  // namespace polefit

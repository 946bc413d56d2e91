#include "exchange/filter_result.h"

#include <cmath>
#include <memory>
#include <numbers>
#include <set>

#include "solver/model/transfer_function.h"
#include "solver/problem/answers.h"
#include "solver/problem/problem.h"

namespace polefit {

namespace {

/// The poles or zeros of a factor at their true places, one by one.
void AddLocation(const Location& placed, std::vector<ResultLocation>& locations) {
  const bool isOmega = placed.kind == FactorKind::omegaZero;
  const bool isPair = isOmega || IsPair(placed.kind);
  for (int i = 0; i < placed.multiplicity; ++i) {
    const ResultLocation location = {placed.kind, placed.IsPole(), isPair, placed.real,
                                     placed.imaginary};
    ResultLocation mirrored = location;
    mirrored.real = -location.real;
    mirrored.isPole = placed.bringsPole;
    locations.push_back(location);
    if (placed.onBothSides || placed.bringsPole) locations.push_back(mirrored);
  }
}

/// The solver starts from values of its own where an answer is empty; those are no result.
void CheckAnswered(const ResponseRecord& record, const FilterResult& result,
                   std::vector<std::string>& faults) {
  std::set<int> slots = {slot::kGain};
  for (const ResultLocation& location : result.locations)
    slots.insert(SlotsOf(location.kind).front());
  for (const int slot : slots) {
    if (!Words(record.Slot(slot)).empty()) continue;
    faults.push_back(QuestionTopic(slot).name + " is empty; a result has all its answers.");
  }
}

/// The solver moves such a start inside the bounds; H(s) itself does not exist.
void CheckPoles(const FilterResult& result, std::vector<std::string>& faults) {
  for (const ResultLocation& location : result.locations) {
    if (location.real != 0 || location.kind == FactorKind::omegaZero) continue;
    faults.push_back(location.isPair ? "Question 8: a pole pair with real part 0 has no H(s)."
                                     : "Question 7: a pole at 0 has no H(s).");
  }
}

void AddRows(const ResponseRecord& record, FilterResult& result) {
  std::vector<Finding> findings;
  const std::shared_ptr<const Problem> problem = ReadSharedProblem(record, findings);
  result.pointFaults = FaultTexts(findings);
  if (!result.pointFaults.empty()) return;
  TransferFunction transfer(*problem);
  transfer.UseTypedGain();
  const PassbandFit fit = transfer.Passband();
  const std::vector<double> delays = transfer.GroupDelays(fit.frequency);
  double squares = 0;
  for (std::size_t i = 0; i < fit.frequency.size(); ++i) {
    result.rows.push_back(
        {fit.frequency[i], fit.yin[i], fit.yout[i], fit.obtained[i], fit.decibels[i], delays[i]});
    squares += fit.weighted[i] * fit.weighted[i];
  }
  result.isWeighted = problem->inputPower != 0 || problem->usesWeights;
  result.rms = std::sqrt(squares / static_cast<double>(fit.frequency.size()));
}

std::vector<std::complex<double>> RootsOf(const FilterResult& result, bool arePoles) {
  std::vector<std::complex<double>> roots;
  for (const ResultLocation& location : result.locations) {
    if (location.isPole != arePoles) continue;
    roots.push_back(location.Upper());
    if (location.isPair) roots.push_back(std::conj(location.Upper()));
  }
  return roots;
}

}  // namespace

double FilterResult::AngularUnit() const {
  return 2 * std::numbers::pi * freqNorm * 1e6;
}

FilterResult ReadFilterResult(const ResponseRecord& record, std::vector<std::string>& faults) {
  FilterResult result;
  std::vector<Finding> findings;
  const std::shared_ptr<const Problem> problem = ReadSharedConstellation(record, findings);
  faults = FaultTexts(findings);
  if (!faults.empty()) return result;
  const TransferFunction transfer(*problem);
  result.freqNorm = transfer.FreqNorm();
  result.gain = transfer.Gain();
  for (const Location& placed : transfer.Locations()) AddLocation(placed, result.locations);
  CheckAnswered(record, result, faults);
  CheckPoles(result, faults);
  if (faults.empty()) AddRows(record, result);
  return result;
}

std::vector<std::complex<double>> PolesOf(const FilterResult& result) {
  return RootsOf(result, true);
}

std::vector<std::complex<double>> ZerosOf(const FilterResult& result) {
  return RootsOf(result, false);
}

std::complex<double> ResponseAt(const FilterResult& result, double w) {
  const std::complex<double> s(0, w);
  std::complex<double> response = result.gain;
  for (const ResultLocation& location : result.locations) {
    const std::complex<double> root = location.Upper();
    std::complex<double> factor = (root - s) / root;
    if (location.isPair) factor *= (std::conj(root) - s) / std::conj(root);
    response = location.isPole ? response / factor : response * factor;
  }
  return response;
}

double ConstantInRadians(const FilterResult& result) {
  // At 40 poles in rad/s the product leaves the range of double long before K does.
  long double constant = result.gain;
  for (const ResultLocation& location : result.locations) {
    const long double unit = result.AngularUnit();
    const long double real = location.real * unit;
    const long double imaginary = location.imaginary * unit;
    const long double product =
        location.isPair ? real * real + imaginary * imaginary : -real;  // of (0 - root)
    constant = location.isPole ? constant * product : constant / product;
  }
  return static_cast<double>(constant);
}

const char* KindName(const ResultLocation& location) {
  const bool isOwnPole = location.kind == FactorKind::sigmaZero && location.isPole;
  return isOwnPole ? "lossless pole" : ShortName(location.kind);
}

std::optional<double> PairQuality(const ResultLocation& location) {
  if (!location.isPair || location.real == 0) return std::nullopt;
  return std::abs(location.Upper()) / (2 * std::abs(location.real));
}

}  // namespace polefit

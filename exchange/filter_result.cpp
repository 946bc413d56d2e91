#include "exchange/filter_result.h"

#include <cmath>
#include <numbers>

#include "solver/model/model.h"
#include "solver/problem/problem_reader.h"

namespace polefit {

namespace {

/// What an omega-axis zero leaves of |H| in the model, which keeps it off 0, is 0.
constexpr double kNothing = 1e-90;

/// Turns the factors of a problem into poles and zeros at their true places.
class LocationGatherer {
 public:
  explicit LocationGatherer(const Problem& problem) : problem_(problem) {}

  std::vector<ResultLocation> Gather() {
    for (std::size_t i = 0; i < problem_.constellation.factors.size(); ++i) {
      AddFactor(problem_.constellation.factors[i], problem_.isRightHalf[i]);
    }
    return std::move(locations_);
  }

 private:
  void AddFactor(const Factor& factor, bool isRightHalf) {
    const double a = problem_.typedParameters[factor.parameter];
    const double side = isRightHalf ? 1 : -1;
    const double b = factor.IsPair() ? problem_.typedParameters[factor.parameter + 1] : 0;
    switch (factor.kind) {
      case FactorKind::sigmaPole:
      case FactorKind::polePair:
        return Add(factor, true, -a, b);
      case FactorKind::omegaZero:
        locations_.push_back({factor.kind, false, true, 0, a});
        return;
      case FactorKind::zeroPair:
        return Add(factor, false, side * a, b);
      case FactorKind::zeroQuad:
        Add(factor, false, -a, b);
        return Add(factor, false, a, b);
      case FactorKind::sigmaZero:
        return AddSigmaZero(factor, a, side);
    }
  }

  /// A doublet has zeros on both sides, a lossless one a pole opposite each zero; both: twice that.
  void AddSigmaZero(const Factor& factor, double v, double side) {
    if (factor.logCount == 1) return Add(factor, false, side * v, 0);
    if (factor.logCount == 2) {
      Add(factor, false, -v, 0);
      return Add(factor, false, v, 0);
    }
    for (int i = 0; i < factor.delayCount; i += 2) {
      Add(factor, false, v, 0);
      Add(factor, true, -v, 0);
    }
  }

  void Add(const Factor& factor, bool isPole, double real, double imaginary) {
    locations_.push_back({factor.kind, isPole, factor.IsPair(), real, imaginary});
  }

  const Problem& problem_;
  std::vector<ResultLocation> locations_;
};

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
  const Problem problem = ReadProblem(record, findings);
  result.pointFaults = FaultTexts(findings);
  if (!result.pointFaults.empty()) return;
  const Eigen::ArrayXd magnitudes =
      result.gain *
      Magnitudes(problem.constellation, problem.typedParameters, problem.rows.frequencies);
  const Eigen::ArrayXd delays =
      problem.DelayUnit() *
      Delays(problem.constellation, problem.typedParameters, problem.rows.frequencies);
  for (std::size_t row = 0; row < problem.passband.size(); ++row) {
    const PassbandPoint& point = problem.passband[row];
    const auto i = static_cast<Eigen::Index>(row);
    const double obtained = point.yin * (magnitudes[i] < kNothing ? 0 : magnitudes[i]);
    result.rows.push_back({point.frequency, point.yin, point.yout, obtained, delays[i]});
  }
  result.rms = std::sqrt((problem.rows.inputs * magnitudes - problem.rows.targets).square().mean());
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
  const Problem problem = ReadConstellation(record, findings);
  faults = FaultTexts(findings);
  if (!faults.empty()) return result;
  result.freqNorm = problem.freqNorm;
  result.gain = problem.typedGain;
  result.locations = LocationGatherer(problem).Gather();
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

double LeadingConstant(const FilterResult& result) {
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
  switch (location.kind) {
    case FactorKind::sigmaPole:
      return "sigma pole";
    case FactorKind::polePair:
      return "pole pair";
    case FactorKind::sigmaZero:
      return location.isPole ? "lossless pole" : "sigma zero";
    case FactorKind::omegaZero:
      return "omega zero";
    case FactorKind::zeroPair:
      return "zero pair";
    case FactorKind::zeroQuad:
      break;
  }
  return "zero quad";
}

std::optional<double> QualityOf(const ResultLocation& location) {
  if (!location.isPair || location.real == 0) return std::nullopt;
  return std::abs(location.Upper()) / (2 * std::abs(location.real));
}

}  // namespace polefit

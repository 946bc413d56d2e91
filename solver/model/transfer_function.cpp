#include "solver/model/transfer_function.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "solver/model/model.h"
#include "solver/problem/problem.h"
#include "solver/problem/problem_reader.h"

namespace polefit {

namespace {

using Eigen::ArrayXd;

constexpr double kDecibelsPerNeper = 8.685889638065037;
constexpr double kDegreesPerRadian = 57.29577951308232;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

Eigen::Map<const ArrayXd> AsArray(const std::vector<double>& values) {
  return {values.data(), static_cast<Eigen::Index>(values.size())};
}

std::vector<double> AsVector(const ArrayXd& values) {
  return {values.begin(), values.end()};
}

/// At an omega-axis zero |H| is kept off 0 by so little that it would show as 1e-100.
double NotTiny(double value) {
  return std::abs(value) < 1e-90 ? 0 : value;
}

/// Yin at any frequency.
class InputCurve {
 public:
  explicit InputCurve(const std::vector<PassbandPoint>& points) : points_(points) {
    const auto isBelow = [](const PassbandPoint& one, const PassbandPoint& other) {
      return one.frequency < other.frequency;
    };
    if (!std::is_sorted(points_.begin(), points_.end(), isBelow)) {
      std::stable_sort(points_.begin(), points_.end(), isBelow);
    }
  }

  double At(double frequency) const {
    const auto after = std::upper_bound(
        points_.begin(), points_.end(), frequency,
        [](double value, const PassbandPoint& point) { return value < point.frequency; });
    if (after == points_.begin()) return kNone;
    const auto before = std::prev(after);
    if (before->frequency == frequency) return before->yin;
    if (after == points_.end()) return kNone;
    const double share = (frequency - before->frequency) / (after->frequency - before->frequency);
    if (before->yin > 0 && after->yin > 0) {
      return before->yin * std::pow(after->yin / before->yin, share);
    }
    return before->yin + share * (after->yin - before->yin);
  }

 private:
  std::vector<PassbandPoint> points_;
};

double SigmaRealPart(const Factor& factor, double location, bool isRightHalf) {
  const bool isLossless = factor.kind == FactorKind::sigmaZero && factor.logCount == 0;
  return isLossless || isRightHalf ? location : -location;
}

}  // namespace

std::shared_ptr<const Problem> ReadSharedProblem(const ResponseRecord& record,
                                                 std::vector<Finding>& findings) {
  return std::make_shared<const Problem>(ReadProblem(record, findings));
}

std::shared_ptr<const Problem> ReadSharedConstellation(const ResponseRecord& record,
                                                       std::vector<Finding>& findings) {
  return std::make_shared<const Problem>(ReadConstellation(record, findings));
}

TransferFunction::TransferFunction(const Problem& problem)
    : TransferFunction(problem, AsVector(problem.typedParameters)) {}

TransferFunction::TransferFunction(const Problem& problem, std::vector<double> parameters)
    : problem_(&problem), parameters_(std::move(parameters)), gain_(problem.typedGain) {
  if (HasPoints()) Judge();
}

void TransferFunction::Judge() {
  Fit fit;
  isFinite_ =
      Objective(problem_->constellation, problem_->rows).EvaluateErrors(AsArray(parameters_), fit);
  gain_ = fit.gain;
  delayConstant_ = fit.delayConstant;
  cost_ = fit.cost;
  rmsError_ = std::sqrt(fit.meanSquare);
}

void TransferFunction::UseTypedGain() {
  gain_ = problem_->typedGain;
}

bool TransferFunction::HasPoints() const {
  return !problem_->passband.empty();
}

bool TransferFunction::WantsDelay() const {
  return problem_->wantsDelay && !problem_->delay.empty();
}

double TransferFunction::FreqNorm() const {
  return problem_->freqNorm;
}

double TransferFunction::LowestLocation() const {
  return problem_->lowest;
}

double TransferFunction::LargestLocation() const {
  return problem_->largest;
}

int TransferFunction::PoleCount() const {
  return problem_->PoleCount();
}

int TransferFunction::ZeroCount() const {
  return problem_->ZeroCount();
}

std::vector<double> TransferFunction::Magnitudes(const std::vector<double>& megahertz) const {
  return AsVector(gain_ * polefit::Magnitudes(problem_->constellation, AsArray(parameters_),
                                              AsArray(megahertz) / problem_->freqNorm));
}

std::vector<double> TransferFunction::Inputs(const std::vector<double>& megahertz) const {
  const InputCurve input(problem_->passband);
  std::vector<double> values;
  values.reserve(megahertz.size());
  for (const double frequency : megahertz) values.push_back(input.At(frequency));
  return values;
}

std::vector<double> TransferFunction::Obtained(const std::vector<double>& megahertz) const {
  return AsVector(AsArray(Inputs(megahertz)) * AsArray(Magnitudes(megahertz)));
}

std::vector<double> TransferFunction::GroupDelays(const std::vector<double>& megahertz) const {
  return AsVector(problem_->DelayUnit() * Delays(problem_->constellation, AsArray(parameters_),
                                                 AsArray(megahertz) / problem_->freqNorm));
}

std::vector<double> TransferFunction::Phases(const std::vector<double>& megahertz) const {
  return AsVector(kDegreesPerRadian * polefit::Phases(problem_->constellation, AsArray(parameters_),
                                                      AsArray(megahertz) / problem_->freqNorm));
}

std::pair<double, double> TransferFunction::PointRange() const {
  if (!HasPoints()) return {0, 0};
  std::pair<double, double> range(kInfinity, -kInfinity);
  const auto take = [&range](double frequency) {
    range.first = std::min(range.first, frequency);
    range.second = std::max(range.second, frequency);
  };
  for (const PassbandPoint& point : problem_->passband) take(point.frequency);
  if (!WantsDelay()) return range;
  for (const DelayPoint& point : problem_->delay) take(point.frequency);
  return range;
}

PassbandFit TransferFunction::Passband() const {
  PassbandFit fit;
  const ArrayXd magnitudes = polefit::Magnitudes(problem_->constellation, AsArray(parameters_),
                                                 problem_->rows.frequencies);
  const std::size_t count = problem_->passband.size();
  for (auto* column : {&fit.frequency, &fit.yin, &fit.yout, &fit.weight, &fit.obtained, &fit.error,
                       &fit.weighted, &fit.decibels}) {
    column->reserve(count);
  }
  for (std::size_t row = 0; row < count; ++row) {
    const auto i = static_cast<Eigen::Index>(row);
    const PassbandPoint& point = problem_->passband[row];
    const double obtained = NotTiny(gain_ * point.yin * magnitudes[i]);
    fit.frequency.push_back(point.frequency);
    fit.yin.push_back(point.yin);
    fit.yout.push_back(point.yout);
    fit.weight.push_back(point.weight);
    fit.obtained.push_back(obtained);
    fit.error.push_back(obtained - point.yout);
    fit.weighted.push_back(
        NotTiny(gain_ * problem_->rows.inputs[i] * magnitudes[i] - problem_->rows.targets[i]));
    const double ratio = point.yout > 0 ? obtained / point.yout : 0;
    fit.decibels.push_back(ratio > 0 ? kDecibelsPerNeper * std::log(ratio) : kNone);
  }
  return fit;
}

DelayFit TransferFunction::DelayPoints() const {
  DelayFit fit;
  const ArrayXd delays =
      problem_->DelayUnit() *
      Delays(problem_->constellation, AsArray(parameters_), problem_->rows.delayFrequencies);
  for (std::size_t i = 0; i < problem_->delay.size(); ++i) {
    const DelayPoint& point = problem_->delay[i];
    fit.frequency.push_back(point.frequency);
    fit.tx.push_back(point.tx);
    fit.own.push_back(delays[static_cast<Eigen::Index>(i)]);
    fit.total.push_back(point.tx + fit.own.back());
    fit.error.push_back(fit.total.back() - delayConstant_);
  }
  return fit;
}

std::vector<Location> TransferFunction::Locations() const {
  std::vector<Location> locations;
  std::array<std::size_t, 6> counts{};
  for (std::size_t i = 0; i < problem_->constellation.factors.size(); ++i) {
    const Factor& factor = problem_->constellation.factors[i];
    const double location = parameters_[factor.Parameter(0)];
    const bool isOmega = factor.kind == FactorKind::omegaZero;
    const bool isSigmaZero = factor.kind == FactorKind::sigmaZero;
    const bool isDoublet = isSigmaZero && factor.logCount == 2;
    locations.push_back(
        {factor.kind, counts.at(static_cast<std::size_t>(factor.kind))++,
         isOmega ? 0 : SigmaRealPart(factor, location, problem_->isRightHalf[i]),
         isOmega ? location : (factor.IsPair() ? parameters_[factor.Parameter(1)] : 0),
         isDoublet || factor.kind == FactorKind::zeroQuad, isSigmaZero && factor.logCount == 0,
         factor.delayCount == 4 ? 2 : 1, factor.parameter >= problem_->constellation.MovedCount()});
  }
  return locations;
}

}  // namespace polefit

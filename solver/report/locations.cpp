#include "solver/report/locations.h"

#include <cmath>

#include "base/text_format.h"
#include "solver/report/last_run.h"

namespace polefit {

namespace {

constexpr FactorKind kReportOrder[] = {FactorKind::sigmaPole, FactorKind::polePair,
                                       FactorKind::sigmaZero, FactorKind::omegaZero,
                                       FactorKind::zeroPair,  FactorKind::zeroQuad};

/// Where an omega-axis zero leaves no room for equalised ones or for a sidelobe; these keep it from
/// the bound itself.
constexpr double kRangeEnd = 1 - 1e-5;

Bound BoundOf(const Problem& problem, const Factor& factor, int parameter, double value) {
  const Constellation& constellation = problem.constellation;
  if (parameter >= constellation.MovedCount()) return Bound::held;
  const bool isAtEnd = factor.kind == FactorKind::omegaZero && problem.Equalises() &&
                       value > kRangeEnd * problem.largest;
  if (isAtEnd) return Bound::rangeEnd;
  if (parameter >= constellation.orcaCount) return Bound::none;
  if (value <= problem.lower[parameter]) return Bound::lower;
  return value >= problem.upper[parameter] ? Bound::upper : Bound::none;
}

Side SideOf(const Problem& problem, const LocationFigures& location) {
  if (location.kind == FactorKind::zeroQuad) return Side::both;
  if (location.isDoublet && !location.isLossless) return Side::both;
  return location.isLossless || problem.isRightHalf[location.factor] ? Side::right : Side::left;
}

LocationFigures Locate(const Problem& problem, const Iterate& iterate, std::size_t index,
                       int number) {
  const Factor& factor = problem.constellation.factors[index];
  const auto part = [&](int parameter) {
    const double value = iterate.parameters[parameter];
    return LocationPart{parameter, value, BoundOf(problem, factor, parameter, value)};
  };
  LocationFigures location;
  location.factor = index;
  location.kind = factor.kind;
  if (factor.kind == FactorKind::sigmaZero) {
    location.isLossless = factor.logCount == 0;
    location.isDoublet = factor.logCount == 2 || factor.delayCount == 4;
  }
  location.number = number;
  location.side = SideOf(problem, location);
  if (factor.kind == FactorKind::omegaZero) {
    location.imaginary = part(factor.parameter);
  } else {
    location.real = part(factor.parameter);
    if (factor.IsPair()) location.imaginary = part(factor.parameter + 1);
  }
  return location;
}

const char* NameOf(FactorKind kind) {
  switch (kind) {
    case FactorKind::sigmaPole:
      return "sigma-axis pole";
    case FactorKind::polePair:
      return "pole pair";
    case FactorKind::sigmaZero:
      return "sigma-axis zero";
    case FactorKind::omegaZero:
      return "omega-axis zero";
    case FactorKind::zeroPair:
      return "zero pair";
    default:
      return "zero quad";
  }
}

}  // namespace

double LocationFigures::Quality() const {
  return std::hypot(real.value, imaginary.value) / (2 * real.value);
}

bool LocationFigures::IsFree() const {
  const auto isFree = [](const LocationPart& part) {
    return part.parameter >= 0 && part.bound == Bound::none && part.value != 0;
  };
  return isFree(real) || isFree(imaginary);
}

bool LocationFigures::IsDetermined() const {
  constexpr double kMost = .3;
  double square = 0;
  for (const LocationPart* const part : {&real, &imaginary}) {
    if (part->parameter < 0 || part->bound != Bound::none || part->value == 0) continue;
    square += part->deviation * part->deviation;
  }
  return std::sqrt(square) <= kMost * std::hypot(real.value, imaginary.value);
}

std::string LocationFigures::Name() const {
  if (kind == FactorKind::sigmaZero) return NameOf(kind);
  return NameOf(kind) + Format(" %d", number);
}

std::vector<LocationFigures> LocationsOf(const Problem& problem, const Iterate& iterate) {
  std::vector<LocationFigures> locations;
  for (const FactorKind kind : kReportOrder) {
    int number = 0;
    for (const std::size_t index : SortedFactors(problem, iterate, kind)) {
      locations.push_back(Locate(problem, iterate, index, ++number));
      if (!locations.back().isLossless) continue;
      LocationFigures pole = locations.back();
      pole.isOwnPole = true;
      pole.side = Side::left;
      locations.push_back(pole);
    }
  }
  return locations;
}

double LeadingConstant(const Problem& problem, const Iterate& iterate) {
  double constant = iterate.fit.gain;
  for (std::size_t i = 0; i < problem.constellation.factors.size(); ++i) {
    const Factor& factor = problem.constellation.factors[i];
    const double a = iterate.parameters[factor.parameter];
    const double b = factor.IsPair() ? iterate.parameters[factor.parameter + 1] : 0;
    const double square = a * a + b * b;
    switch (factor.kind) {
      case FactorKind::sigmaPole:
        constant *= a;
        break;
      case FactorKind::polePair:
        constant *= square;
        break;
      case FactorKind::omegaZero:
      case FactorKind::zeroPair:
        constant /= square;
        break;
      case FactorKind::zeroQuad:
        constant /= square * square;
        break;
      case FactorKind::sigmaZero:
        if (factor.logCount == 1) constant /= problem.isRightHalf[i] ? -a : a;
        if (factor.logCount == 2) constant /= -a * a;
        if (factor.delayCount == 2) constant = -constant;
        break;
    }
  }
  return constant;
}

}  // namespace polefit

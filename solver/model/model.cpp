#include "solver/model/model.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace polefit {

// With z = a + j(w -+ b) and ln H(s) = sum of +-ln z, everything below is d ln z = dz / z and its
// repetitions: d/da z = 1, d/db z = -+j, d/dw z = j. (A. Papoulis, The Fourier Integral and Its
// Applications, 1962, section 7: magnitude and group delay of pole-zero functions.)

namespace {

struct Complex {
  double re;
  double im;
};

/// 1 / (a + jy)
inline Complex Inverse(double a, double y) {
  const double scale = 1 / (a * a + y * y);
  return {a * scale, -y * scale};
}

inline Complex operator*(const Complex& x, const Complex& y) {
  return {x.re * y.re - x.im * y.im, x.re * y.im + x.im * y.re};
}

/// 1/z1 and 1/z2 of a pair.
struct PairInverses {
  Complex first;
  Complex second;

  PairInverses(double a, double b, double w) {
    const double y1 = w - b;
    const double y2 = w + b;
    const double square1 = a * a + y1 * y1;
    const double square2 = a * a + y2 * y2;
    // One division is quicker than two.
    const double scale = 1 / (square1 * square2);
    first = {a * (square2 * scale), -y1 * (square2 * scale)};
    second = {a * (square1 * scale), -y2 * (square1 * scale)};
  }
};

// In ln|H| a constant factor is left out of the derivatives: the gain takes it up, and of the
// sidelobe peaks only the differences count.

/// The derivatives of ln|z|, z = v + jw.
inline FactorDerivatives<double> SigmaLog(double v, double w) {
  const Complex inverse = Inverse(v, w);
  return {{inverse.re, 0}, {inverse.im * inverse.im - inverse.re * inverse.re, 0}};
}

/// The derivatives of ln|z1 z2|.
inline FactorDerivatives<double> PairLog(double a, double b, double w) {
  const PairInverses inverse(a, b, w);
  const Complex square1 = inverse.first * inverse.first;
  const Complex square2 = inverse.second * inverse.second;
  return {{inverse.first.re + inverse.second.re, inverse.first.im - inverse.second.im},
          {-square1.re - square2.re, square2.im - square1.im}};
}

/// 1 - (w/z)^2, kept off 0 by so little that no figure can show it.
inline double OmegaFactor(double z, double w) {
  constexpr double kSmallest = 1e-100;
  return (z - w) * (z + w) * (1 / (z * z)) + kSmallest;
}

inline FactorDerivatives<double> RelativeOmega(double z, double w) {
  const double share = w * w / (z * z * z * OmegaFactor(z, w));
  return {{2 * share, 0}, {-6 / z * share, 0}};
}

inline FactorDerivatives<double> SigmaDelay(double v, double w) {
  const Complex inverse = Inverse(v, w);
  const Complex square = inverse * inverse;
  return {{-square.re, 0}, {2 * (square * inverse).re, 0}};
}

inline FactorDerivatives<double> PairDelay(double a, double b, double w) {
  const PairInverses inverse(a, b, w);
  const Complex square1 = inverse.first * inverse.first;
  const Complex square2 = inverse.second * inverse.second;
  const Complex cube1 = square1 * inverse.first;
  const Complex cube2 = square2 * inverse.second;
  return {{-square1.re - square2.re, square2.im - square1.im},
          {2 * (cube1.re + cube2.re), 2 * (cube1.im - cube2.im)}};
}

/// Hands a function of w on: the square of the factor's magnitude.
template <typename Use>
[[gnu::always_inline]] inline void WithSquare(const PlacedFactor& factor, Use use) {
  const double a = factor.location;
  const double scale = factor.scale;
  if (factor.kind == FactorKind::omegaZero) {
    use([a](double w) { return OmegaFactor(a, w) * OmegaFactor(a, w); });
  } else if (factor.IsPair()) {
    const double b = factor.imaginary;
    use([a, b, scale](double w) {
      return ((a * a + (w - b) * (w - b)) * scale) * ((a * a + (w + b) * (w + b)) * scale);
    });
  } else {
    use([a, scale](double w) { return (a * a + w * w) * scale; });
  }
}

/// Hands a function of w on: the factor's group delay.
template <typename Use>
[[gnu::always_inline]] inline void WithDelay(const PlacedFactor& factor, Use use) {
  const double a = factor.location;
  const double count = factor.delayCount;
  if (factor.IsPair()) {
    const double b = factor.imaginary;
    use([a, b, count](double w) {
      const PairInverses inverse(a, b, w);
      return count * (inverse.first.re + inverse.second.re);
    });
  } else {
    use([a, count](double w) { return count * Inverse(a, w).re; });
  }
}

/// `count` times what `derivativesAt` gives for a frequency, at all rows.
template <std::size_t parts, typename Function>
[[gnu::always_inline]] inline void ForRows(std::size_t rows, const Chunk& w, double count,
                                           FactorDerivatives<Chunk>& to, Function derivativesAt) {
  for (std::size_t i = 0; i < rows; ++i) {
    const FactorDerivatives<double> d = derivativesAt(w[i]);
    for (std::size_t part = 0; part < parts; ++part) {
      to.first[part][i] = count * d.first[part];
      to.second[part][i] = count * d.second[part];
    }
  }
}

}  // namespace

PlacedFactor::PlacedFactor(const Factor& factor, const Eigen::VectorXd& parameters)
    : Factor(factor),
      location(parameters[parameter]),
      imaginary(IsPair() ? parameters[parameter + 1] : 0),
      scale(1 / (location * location + imaginary * imaginary)) {}

void Place(const Constellation& constellation, const Eigen::VectorXd& parameters,
           std::vector<PlacedFactor>& placed) {
  placed.clear();
  for (const Factor& factor : constellation.factors) placed.emplace_back(factor, parameters);
}

POLEFIT_WIDE void MultiplySquare(const PlacedFactor& factor, std::size_t rows, const Chunk& w,
                                 Chunk& zeros, Chunk& poles) {
  Chunk& product = factor.logCount < 0 ? poles : zeros;
  WithSquare(factor, [&](auto squareAt) {
    for (int count = std::abs(factor.logCount); count > 0; --count) {
      for (std::size_t i = 0; i < rows; ++i) product[i] *= squareAt(w[i]);
    }
  });
}

POLEFIT_WIDE void DeriveRelative(const PlacedFactor& factor, std::size_t rows, const Chunk& w,
                                 FactorDerivatives<Chunk>& derivatives) {
  const double a = factor.location;
  if (factor.kind == FactorKind::omegaZero) {
    ForRows<1>(rows, w, 1, derivatives, [a](double at) { return RelativeOmega(a, at); });
  } else if (factor.IsPair()) {
    const double b = factor.imaginary;
    ForRows<2>(rows, w, factor.logCount, derivatives,
               [a, b](double at) { return PairLog(a, b, at); });
  } else {
    ForRows<1>(rows, w, factor.logCount, derivatives, [a](double at) { return SigmaLog(a, at); });
  }
}

POLEFIT_WIDE void AddDelay(const PlacedFactor& factor, std::size_t rows, const Chunk& w,
                           Chunk& delay) {
  if (factor.delayCount == 0) return;
  WithDelay(factor, [&](auto delayAt) {
    for (std::size_t i = 0; i < rows; ++i) delay[i] += delayAt(w[i]);
  });
}

POLEFIT_WIDE void DeriveDelay(const PlacedFactor& factor, std::size_t rows, const Chunk& w,
                              FactorDerivatives<Chunk>& derivatives) {
  const double a = factor.location;
  if (factor.IsPair()) {
    const double b = factor.imaginary;
    ForRows<2>(rows, w, factor.delayCount, derivatives,
               [a, b](double at) { return PairDelay(a, b, at); });
  } else {
    ForRows<1>(rows, w, factor.delayCount, derivatives,
               [a](double at) { return SigmaDelay(a, at); });
  }
}

Eigen::ArrayXd Magnitudes(const Constellation& constellation, const Eigen::VectorXd& parameters,
                          const Eigen::ArrayXd& w) {
  Eigen::ArrayXd magnitudes = Eigen::ArrayXd::Ones(w.size());
  for (const Factor& factor : constellation.factors) {
    WithSquare(PlacedFactor(factor, parameters), [&](auto squareAt) {
      const Eigen::ArrayXd magnitude = w.unaryExpr(squareAt).sqrt();
      if (factor.logCount < 0) magnitudes /= magnitude;
      for (int i = 0; i < factor.logCount; ++i) magnitudes *= magnitude;
    });
  }
  return magnitudes;
}

Eigen::ArrayXd Delays(const Constellation& constellation, const Eigen::VectorXd& parameters,
                      const Eigen::ArrayXd& w) {
  Eigen::ArrayXd delays = Eigen::ArrayXd::Zero(w.size());
  for (const Factor& factor : constellation.factors) {
    WithDelay(PlacedFactor(factor, parameters),
              [&](auto delayAt) { delays += w.unaryExpr(delayAt); });
  }
  return delays;
}

Eigen::ArrayXd Phases(const Constellation& constellation, const Eigen::VectorXd& parameters,
                      const Eigen::ArrayXd& w) {
  Eigen::ArrayXd phases = Eigen::ArrayXd::Zero(w.size());
  for (const Factor& factor : constellation.factors) {
    const PlacedFactor placed(factor, parameters);
    const double a = placed.location;
    const double count = factor.delayCount;
    if (factor.kind == FactorKind::omegaZero) {
      phases += (w > a).cast<double>() * std::numbers::pi;
    } else if (count != 0 && factor.IsPair()) {
      // z1 z2 = a^2 + b^2 - w^2 + 2jaw stays in the upper half-plane, so that one arc does.
      const double b = placed.imaginary;
      phases -= w.unaryExpr(
          [=](double at) { return count * std::atan2(2 * a * at, a * a + (b - at) * (b + at)); });
    } else if (count != 0) {
      phases -= w.unaryExpr([=](double at) { return count * std::atan(at / a); });
    }
  }
  return phases;
}

LogCurve::LogCurve(const Constellation& constellation, const Eigen::VectorXd& parameters) {
  // Keeps a zero off the omega axis by so little that no figure can show it.
  constexpr double kSmallest = 1e-60;
  zeros_.reserve(2 * constellation.factors.size());
  poles_.reserve(2 * constellation.factors.size());
  for (const Factor& factor : constellation.factors) {
    const double location = parameters[factor.parameter];
    const bool isOmega = factor.kind == FactorKind::omegaZero;
    const double square = isOmega ? kSmallest : location * location;
    double position = isOmega ? location : 0;
    if (factor.IsPair()) {
      position = parameters[factor.parameter + 1];
      resonances_.push_back({position, location});
    }
    const double scale = 1 / (position * position + square);
    std::vector<Root>& roots = factor.logCount < 0 ? poles_ : zeros_;
    for (int i = 0; i < std::abs(factor.logCount); ++i) {
      roots.push_back({position, square, scale});
      if (isOmega || factor.IsPair()) roots.push_back({-position, square, scale});
    }
  }
}

/// The product of |w - root|^2 scale for some roots from the index `first` on: so many that it
/// stays in the range of numbers.
template <typename T>
T LogCurve::Product(const std::vector<Root>& roots, std::size_t first, const T& w) {
  T product = 1 + 0 * w;
  for (std::size_t i = first; i < std::min(first + kRootsALogarithm, roots.size()); ++i) {
    const T y = w - roots[i].position;
    product *= (y * y + roots[i].square) * roots[i].scale;
  }
  return product;
}

template <typename T>
T LogCurve::LevelAt(const T& w) const {
  using std::log;
  T sum = 0 * w;
  const std::size_t end = std::max(zeros_.size(), poles_.size());
  for (std::size_t first = 0; first < end; first += kRootsALogarithm) {
    sum += log(Product(zeros_, first, w) / Product(poles_, first, w));
  }
  return sum / 2;
}

double LogCurve::At(double w) const {
  return LevelAt(w);
}

Eigen::ArrayXd LogCurve::At(const Eigen::ArrayXd& w) const {
  constexpr Eigen::Index kRegister = 4;
  Eigen::ArrayXd levels(w.size());
  for (Eigen::Index first = 0; first < w.size(); first += kRegister) {
    const Eigen::Index count = std::min(kRegister, w.size() - first);
    Eigen::Array<double, kRegister, 1> group;
    group.setConstant(w[first]);
    group.head(count) = w.segment(first, count);
    levels.segment(first, count) = LevelAt(group).head(count);
  }
  return levels;
}

Slope LogCurve::SumOfSlopes(const std::vector<Root>& roots, double w) {
  Slope slope;
  for (const Root& root : roots) {
    const double y = w - root.position;
    const double inverse = 1 / (y * y + root.square);
    slope.first += y * inverse;
    slope.second += (root.square - y * y) * inverse * inverse;
  }
  return slope;
}

Slope LogCurve::SlopeAt(double w) const {
  const Slope zeros = SumOfSlopes(zeros_, w);
  const Slope poles = SumOfSlopes(poles_, w);
  return {zeros.first - poles.first, zeros.second - poles.second};
}

namespace {

void DeriveOmegaLog(double z, double w, int at, LogDerivatives& to) {
  const double gap = (z - w) * (z + w);
  to.first[at] = 2 * z / gap;
  to.second(at, at) = -2 * (z * z + w * w) / (gap * gap);
  to.mixed[at] = 4 * z * w / (gap * gap);
}

void DeriveSigmaLog(double v, double w, int count, int at, LogDerivatives& to) {
  const FactorDerivatives<double> d = SigmaLog(v, w);
  const Complex inverse = Inverse(v, w);
  to.first[at] = count * d.first[0];
  to.second(at, at) = count * d.second[0];
  to.mixed[at] = count * (inverse * inverse).im;
}

void DerivePairLog(double a, double b, double w, int count, int at, LogDerivatives& to) {
  const FactorDerivatives<double> d = PairLog(a, b, w);
  const PairInverses inverse(a, b, w);
  const Complex square1 = inverse.first * inverse.first;
  const Complex square2 = inverse.second * inverse.second;
  to.first[at] = count * d.first[0];
  to.first[at + 1] = count * d.first[1];
  to.second(at, at) = count * d.second[0];
  to.second(at, at + 1) = to.second(at + 1, at) = count * d.second[1];
  to.second(at + 1, at + 1) = -count * d.second[0];
  to.mixed[at] = count * (square1.im + square2.im);
  to.mixed[at + 1] = count * (square2.re - square1.re);
}

}  // namespace

void DeriveLogMagnitude(const Constellation& constellation, const Eigen::VectorXd& parameters,
                        double w, LogDerivatives& derivatives) {
  const int moved = constellation.MovedCount();
  derivatives.first.setZero(moved);
  derivatives.second.setZero(moved, moved);
  derivatives.mixed.setZero(moved);
  for (const Factor& factor : constellation.factors) {
    const int at = factor.parameter;
    if (at >= moved) continue;
    const double a = parameters[at];
    if (factor.kind == FactorKind::omegaZero) {
      DeriveOmegaLog(a, w, at, derivatives);
    } else if (factor.IsPair()) {
      DerivePairLog(a, parameters[at + 1], w, factor.logCount, at, derivatives);
    } else {
      DeriveSigmaLog(a, w, factor.logCount, at, derivatives);
    }
  }
}

}  // namespace polefit

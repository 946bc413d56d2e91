#include "solver/model.h"

#include <algorithm>
#include <cmath>

namespace polefit {

// With z = a + j(w -+ b) and ln H(s) = sum of +-ln z, everything below is d ln z = dz / z and its
// repetitions: d/da z = 1, d/db z = -+j, d/dw z = j. (A. Papoulis, The Fourier Integral and Its
// Applications, 1962, section 7: magnitude and group delay of pole-zero functions.)

namespace {

/// A complex number a row, or one complex number.
template <class T>
struct Complex {
  T re;
  T im;
};

/// 1 / (a + jy)
template <class T>
[[gnu::always_inline]] inline Complex<T> Inverse(double a, const T& y) {
  const T scale = 1.0 / (a * a + y * y);
  return {a * scale, -y * scale};
}

template <class T>
[[gnu::always_inline]] inline Complex<T> operator*(const Complex<T>& x, const Complex<T>& y) {
  return {x.re * y.re - x.im * y.im, x.re * y.im + x.im * y.re};
}

double Location(const Factor& factor, const Eigen::VectorXd& parameters) {
  return parameters[factor.parameter];
}
double ImaginaryPart(const Factor& factor, const Eigen::VectorXd& parameters) {
  return parameters[factor.parameter + 1];
}

// In ln|H| a constant factor is left out of the derivatives: the gain takes it up, and of the
// sidelobe peaks only the differences count.

/// The derivatives of ln|z|, z = v + jw.
template <class T>
FactorDerivatives<T> SigmaLog(double v, const T& w) {
  const Complex<T> inverse = Inverse<T>(v, w);
  FactorDerivatives<T> d;
  d.first[0] = inverse.re;
  d.second[0] = inverse.im * inverse.im - inverse.re * inverse.re;
  return d;
}

/// The derivatives of ln|z1 z2|.
template <class T>
FactorDerivatives<T> PairLog(double a, double b, const T& w) {
  const Complex<T> inverse1 = Inverse<T>(a, w - b);
  const Complex<T> inverse2 = Inverse<T>(a, w + b);
  const Complex<T> square1 = inverse1 * inverse1;
  const Complex<T> square2 = inverse2 * inverse2;
  FactorDerivatives<T> d;
  d.first[0] = inverse1.re + inverse2.re;
  d.first[1] = inverse1.im - inverse2.im;
  d.second[0] = -square1.re - square2.re;
  d.second[1] = square2.im - square1.im;
  return d;
}

/// 1 - (w/z)^2, kept off 0 by so little that no figure can show it.
template <class T>
T OmegaFactor(double z, const T& w) {
  constexpr double kSmallest = 1e-100;
  return (1 - w / z) * (1 + w / z) + kSmallest;
}

FactorDerivatives<Rows> Times(double count, FactorDerivatives<Rows> d) {
  for (Rows& first : d.first) first *= count;
  for (Rows& second : d.second) second *= count;
  return d;
}

FactorDerivatives<Rows> RelativeOmega(double z, const Rows& w) {
  FactorDerivatives<Rows> d;
  const Rows share = (w / z).square() / (z * OmegaFactor<Rows>(z, w));
  d.first[0] = 2 * share;
  d.second[0] = -6 / z * share;
  return d;
}

/// What `valuesAt` gives for a group of frequencies, at all of them.
template <class Function>
Eigen::ArrayXd ByGroups(const Eigen::ArrayXd& w, Function valuesAt) {
  Eigen::ArrayXd result(w.size());
  for (Eigen::Index first = 0; first < w.size(); first += kLanes) {
    const Eigen::Index count = std::min<Eigen::Index>(kLanes, w.size() - first);
    Rows group = Rows::Constant(w[first]);
    group.head(count) = w.segment(first, count);
    result.segment(first, count) = valuesAt(group).head(count);
  }
  return result;
}

}  // namespace

void MultiplySquare(const Factor& factor, const Eigen::VectorXd& parameters, const Rows& w,
                    Rows& squared) {
  const double a = Location(factor, parameters);
  Rows square;
  if (factor.kind == FactorKind::omegaZero) {
    square = OmegaFactor<Rows>(a, w).square();
  } else if (factor.IsPair()) {
    const double b = ImaginaryPart(factor, parameters);
    const double c = a * a + b * b;
    square = (a * a + (w - b).square()) * (a * a + (w + b).square()) / (c * c);
  } else {
    square = 1 + (w / a).square();
  }
  if (factor.logCount < 0) squared /= square;
  for (int i = 0; i < factor.logCount; ++i) squared *= square;
}

FactorDerivatives<Rows> RelativeDerivatives(const Factor& factor, const Eigen::VectorXd& parameters,
                                            const Rows& w) {
  const double a = Location(factor, parameters);
  if (factor.kind == FactorKind::omegaZero) return RelativeOmega(a, w);
  if (!factor.IsPair()) return Times(factor.logCount, SigmaLog(a, w));
  return Times(factor.logCount, PairLog(a, ImaginaryPart(factor, parameters), w));
}

void AddDelay(const Factor& factor, const Eigen::VectorXd& parameters, const Rows& w, Rows& delay) {
  if (factor.delayCount == 0) return;
  const double a = Location(factor, parameters);
  if (!factor.IsPair()) {
    delay += factor.delayCount * Inverse<Rows>(a, w).re;
    return;
  }
  const double b = ImaginaryPart(factor, parameters);
  delay += factor.delayCount * (Inverse<Rows>(a, w - b).re + Inverse<Rows>(a, w + b).re);
}

FactorDerivatives<Rows> DelayDerivatives(const Factor& factor, const Eigen::VectorXd& parameters,
                                         const Rows& w) {
  const double a = Location(factor, parameters);
  const double count = factor.delayCount;
  const double b = factor.IsPair() ? ImaginaryPart(factor, parameters) : 0;
  const Complex<Rows> inverse1 = Inverse<Rows>(a, w - b);
  const Complex<Rows> square1 = inverse1 * inverse1;
  const Complex<Rows> cube1 = square1 * inverse1;
  FactorDerivatives<Rows> d;
  if (!factor.IsPair()) {
    d.first[0] = -count * square1.re;
    d.second[0] = 2 * count * cube1.re;
    return d;
  }
  const Complex<Rows> inverse2 = Inverse<Rows>(a, w + b);
  const Complex<Rows> square2 = inverse2 * inverse2;
  const Complex<Rows> cube2 = square2 * inverse2;
  d.first[0] = -count * (square1.re + square2.re);
  d.first[1] = count * (square2.im - square1.im);
  d.second[0] = 2 * count * (cube1.re + cube2.re);
  d.second[1] = 2 * count * (cube1.im - cube2.im);
  return d;
}

Eigen::ArrayXd Magnitudes(const Constellation& constellation, const Eigen::VectorXd& parameters,
                          const Eigen::ArrayXd& w) {
  return ByGroups(w, [&](const Rows& group) {
    Rows squared = Rows::Ones();
    for (const Factor& factor : constellation.factors) {
      MultiplySquare(factor, parameters, group, squared);
    }
    return squared.sqrt().eval();
  });
}

Eigen::ArrayXd Delays(const Constellation& constellation, const Eigen::VectorXd& parameters,
                      const Eigen::ArrayXd& w) {
  return ByGroups(w, [&](const Rows& group) {
    Rows delay = Rows::Zero();
    for (const Factor& factor : constellation.factors) AddDelay(factor, parameters, group, delay);
    return delay;
  });
}

LogCurve::LogCurve(const Constellation& constellation, const Eigen::VectorXd& parameters) {
  // Keeps a zero off the omega axis by so little that no figure can show it.
  constexpr double kSmallest = 1e-60;
  zeros_.reserve(2 * constellation.factors.size());
  poles_.reserve(2 * constellation.factors.size());
  for (const Factor& factor : constellation.factors) {
    const double location = Location(factor, parameters);
    const bool isOmega = factor.kind == FactorKind::omegaZero;
    const double square = isOmega ? kSmallest : location * location;
    double position = isOmega ? location : 0;
    if (factor.IsPair()) {
      position = ImaginaryPart(factor, parameters);
      resonances_.push_back(position);
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
template <class T>
T LogCurve::Product(const std::vector<Root>& roots, std::size_t first, const T& w) {
  T product = 1 + 0 * w;
  for (std::size_t i = first; i < std::min(first + kRootsALogarithm, roots.size()); ++i) {
    const T y = w - roots[i].position;
    product *= (y * y + roots[i].square) * roots[i].scale;
  }
  return product;
}

template <class T>
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
  return ByGroups(w, [this](const Rows& group) { return LevelAt(group); });
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
  const Complex<double> inverse = Inverse(v, w);
  to.first[at] = count * d.first[0];
  to.second(at, at) = count * d.second[0];
  to.mixed[at] = count * (inverse * inverse).im;
}

void DerivePairLog(double a, double b, double w, int count, int at, LogDerivatives& to) {
  const FactorDerivatives<double> d = PairLog(a, b, w);
  const Complex<double> inverse1 = Inverse(a, w - b);
  const Complex<double> inverse2 = Inverse(a, w + b);
  const Complex<double> square1 = inverse1 * inverse1;
  const Complex<double> square2 = inverse2 * inverse2;
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
    const double a = Location(factor, parameters);
    if (factor.kind == FactorKind::omegaZero) {
      DeriveOmegaLog(a, w, at, derivatives);
    } else if (factor.IsPair()) {
      DerivePairLog(a, ImaginaryPart(factor, parameters), w, factor.logCount, at, derivatives);
    } else {
      DeriveSigmaLog(a, w, factor.logCount, at, derivatives);
    }
  }
}

}  // namespace polefit

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
Complex<T> Inverse(double a, const T& y) {
  const T scale = 1.0 / (a * a + y * y);
  return {a * scale, -y * scale};
}

template <class T>
Complex<T> operator*(const Complex<T>& x, const Complex<T>& y) {
  return {x.re * y.re - x.im * y.im, x.re * y.im + x.im * y.re};
}

double Location(const Factor& factor, const Eigen::VectorXd& parameters) {
  return parameters[factor.parameter];
}
double ImaginaryPart(const Factor& factor, const Eigen::VectorXd& parameters) {
  return parameters[factor.parameter + 1];
}

/// The derivatives of ln|z / v|, z = v + jw.
template <class T>
FactorDerivatives<T> SigmaLog(double v, const T& w) {
  const Complex<T> inverse = Inverse<T>(v, w);
  const Complex<T> square = inverse * inverse;
  FactorDerivatives<T> d;
  d.first[0] = inverse.re - 1 / v;
  d.second[0] = 1 / (v * v) - square.re;
  return d;
}

/// The derivatives of ln|z1 z2 / c|.
template <class T>
FactorDerivatives<T> PairLog(double a, double b, const T& w) {
  const Complex<T> inverse1 = Inverse<T>(a, w - b);
  const Complex<T> inverse2 = Inverse<T>(a, w + b);
  const Complex<T> square1 = inverse1 * inverse1;
  const Complex<T> square2 = inverse2 * inverse2;
  const double c = a * a + b * b;
  FactorDerivatives<T> d;
  d.first[0] = inverse1.re + inverse2.re - 2 * a / c;
  d.first[1] = inverse1.im - inverse2.im - 2 * b / c;
  d.second[0] = (4 * a * a / c - 2) / c - square1.re - square2.re;
  d.second[1] = 4 * a * b / (c * c) - square1.im + square2.im;
  d.second[2] = (4 * b * b / c - 2) / c + square1.re + square2.re;
  return d;
}

/// 1 - (w/z)^2, kept off 0 by so little that no figure can show it.
template <class T>
T OmegaFactor(double z, const T& w) {
  constexpr double kSmallest = 1e-100;
  return (1 - w / z) * (1 + w / z) + kSmallest;
}

/// From the derivatives of a logarithm, taken `count` times, to relative derivatives.
FactorDerivatives<Rows> Relative(FactorDerivatives<Rows> d, double count, bool isPair) {
  d.first[0] *= count;
  d.second[0] = count * d.second[0] + d.first[0].square();
  if (!isPair) return d;
  d.first[1] *= count;
  d.second[1] = count * d.second[1] + d.first[0] * d.first[1];
  d.second[2] = count * d.second[2] + d.first[1].square();
  return d;
}

FactorDerivatives<Rows> RelativeOmega(double z, const Rows& w) {
  FactorDerivatives<Rows> d;
  const Rows share = (w / z).square() / (z * OmegaFactor<Rows>(z, w));
  d.first[0] = 2 * share;
  d.second[0] = -6 / z * share;
  return d;
}

/// A product as the logarithm of what has left the range of numbers, and a rest.
class LogProduct {
 public:
  void Multiply(double value) {
    product_ *= value;
    constexpr double kFar = 1e100;
    if (product_ > kFar || product_ < 1 / kFar) {
      sum_ += std::log(product_);
      product_ = 1;
    }
  }
  double Product() const { return product_; }
  double LogOfRest() const { return sum_; }

 private:
  double product_ = 1;
  double sum_ = 0;
};

template <class Function>
Eigen::ArrayXd ByBlocks(const Eigen::ArrayXd& w, double start, Function addTo) {
  Eigen::ArrayXd result(w.size());
  for (Eigen::Index first = 0; first < w.size(); first += kBlockRows) {
    const Eigen::Index count = std::min<Eigen::Index>(kBlockRows, w.size() - first);
    const Rows block = w.segment(first, count);
    Rows values = Rows::Constant(count, start);
    addTo(block, values);
    result.segment(first, count) = values;
  }
  return result;
}

}  // namespace

void MultiplyMagnitude(const Factor& factor, const Eigen::VectorXd& parameters, const Rows& w,
                       Rows& magnitude) {
  const double a = Location(factor, parameters);
  if (factor.kind == FactorKind::omegaZero) {
    magnitude *= OmegaFactor<Rows>(a, w).abs();
    return;
  }
  if (factor.logCount == 0) return;
  Rows squared;
  if (factor.IsPair()) {
    const double b = ImaginaryPart(factor, parameters);
    const double c = a * a + b * b;
    squared = (a * a + (w - b).square()) * (a * a + (w + b).square()) / (c * c);
  } else {
    squared = 1 + (w / a).square();
  }
  switch (factor.logCount) {
    case -1:
      magnitude /= squared.sqrt();
      break;
    case 1:
      magnitude *= squared.sqrt();
      break;
    default:
      magnitude *= squared;
  }
}

FactorDerivatives<Rows> RelativeDerivatives(const Factor& factor, const Eigen::VectorXd& parameters,
                                            const Rows& w) {
  const double a = Location(factor, parameters);
  if (factor.kind == FactorKind::omegaZero) return RelativeOmega(a, w);
  if (!factor.IsPair()) return Relative(SigmaLog(a, w), factor.logCount, false);
  return Relative(PairLog(a, ImaginaryPart(factor, parameters), w), factor.logCount, true);
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
  d.second[2] = -d.second[0];
  return d;
}

Eigen::ArrayXd Magnitudes(const Constellation& constellation, const Eigen::VectorXd& parameters,
                          const Eigen::ArrayXd& w) {
  return ByBlocks(w, 1, [&](const Rows& block, Rows& values) {
    for (const Factor& factor : constellation.factors) {
      MultiplyMagnitude(factor, parameters, block, values);
    }
  });
}

Eigen::ArrayXd Delays(const Constellation& constellation, const Eigen::VectorXd& parameters,
                      const Eigen::ArrayXd& w) {
  return ByBlocks(w, 0, [&](const Rows& block, Rows& values) {
    for (const Factor& factor : constellation.factors) AddDelay(factor, parameters, block, values);
  });
}

LogCurve::LogCurve(const Constellation& constellation, const Eigen::VectorXd& parameters) {
  terms_.reserve(constellation.factors.size());
  for (const Factor& factor : constellation.factors) {
    if (factor.logCount == 0) continue;
    const double a = Location(factor, parameters);
    if (factor.kind == FactorKind::omegaZero) {
      terms_.push_back({factor.kind, 1, a, 0, 1});
    } else if (factor.IsPair()) {
      const double b = ImaginaryPart(factor, parameters);
      const double c = a * a + b * b;
      terms_.push_back({factor.kind, factor.logCount, a, b, 1 / (c * c)});
      resonances_.push_back(b);
    } else {
      terms_.push_back({factor.kind, factor.logCount, a, 0, 1 / (a * a)});
    }
  }
}

double LogCurve::SquaredMagnitude(const Term& term, double w) {
  const double a = term.real;
  switch (term.kind) {
    case FactorKind::omegaZero: {
      const double value = OmegaFactor(a, w);
      return value * value;
    }
    case FactorKind::sigmaPole:
    case FactorKind::sigmaZero:
      return 1 + w * w * term.scale;
    default: {
      const double below = a * a + (w - term.imaginary) * (w - term.imaginary);
      const double above = a * a + (w + term.imaginary) * (w + term.imaginary);
      return below * above * term.scale;
    }
  }
}

double LogCurve::At(double w) const {
  LogProduct zeros;
  LogProduct poles;
  for (const Term& term : terms_) {
    const double value = SquaredMagnitude(term, w);
    if (term.count < 0) {
      poles.Multiply(value);
    } else {
      zeros.Multiply(term.count == 2 ? value * value : value);
    }
  }
  const double rest = std::log(zeros.Product() / poles.Product());
  return (rest + zeros.LogOfRest() - poles.LogOfRest()) / 2;
}

Slope LogCurve::SlopeAt(double w) const {
  Slope slope;
  for (const Term& term : terms_) {
    const double a = term.real;
    if (term.kind == FactorKind::omegaZero) {
      const double gap = (a - w) * (a + w);
      slope.first -= 2 * w / gap;
      slope.second -= 2 * (a * a + w * w) / (gap * gap);
      continue;
    }
    const bool isPair = term.kind != FactorKind::sigmaPole && term.kind != FactorKind::sigmaZero;
    const Complex<double> inverse1 = Inverse(a, w - term.imaginary);
    slope.first -= term.count * inverse1.im;
    slope.second += term.count * (inverse1 * inverse1).re;
    if (!isPair) continue;
    const Complex<double> inverse2 = Inverse(a, w + term.imaginary);
    slope.first -= term.count * inverse2.im;
    slope.second += term.count * (inverse2 * inverse2).re;
  }
  return slope;
}

namespace {

void DeriveOmegaLog(double z, double w, int at, LogDerivatives& to) {
  const double gap = (z - w) * (z + w);
  to.first[at] = 2 * z / gap - 2 / z;
  to.second(at, at) = 2 / (z * z) - 2 * (z * z + w * w) / (gap * gap);
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
  to.second(at + 1, at + 1) = count * d.second[2];
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

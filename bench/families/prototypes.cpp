#include "bench/families/prototypes.h"

#include <Eigen/Eigenvalues>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace polefit::families {

namespace {

using Complex = std::complex<double>;
constexpr double kPi = std::numbers::pi;
constexpr double kReal = 1e-9;

/// Keeps one root of each pair, a real one without rounding errors in its imaginary part.
std::vector<Complex> UpperHalf(const std::vector<Complex>& roots) {
  std::vector<Complex> upper;
  for (const Complex& root : roots) {
    if (std::abs(root.imag()) < kReal * std::abs(root)) {
      upper.emplace_back(root.real(), 0);
    } else if (root.imag() > 0) {
      upper.push_back(root);
    }
  }
  return upper;
}

/// A root's factor at s = jw, 1 at s = 0.
Complex FactorAt(const Complex& root, double w) {
  const Complex s(0, w);
  const Complex factor = 1.0 - s / root;
  return root.imag() == 0 ? factor : factor * (1.0 - s / std::conj(root));
}

/// What a zero takes off the group delay.
double AdvanceAt(const Complex& root, double w) {
  const auto single = [w](const Complex& at) { return (1.0 / (Complex(0, w) - at)).real(); };
  return root.imag() == 0 ? single(root) : single(root) + single(std::conj(root));
}

double DecibelRatio(double decibels) {
  return std::sqrt(std::pow(10, decibels / 10) - 1);
}

/// The moduli that Landen's descending transformation gives one after the other, the first one k.
std::vector<double> Moduli(double k) {
  std::vector<double> moduli = {k};
  while (moduli.back() > 1e-17) {
    const double last = moduli.back();
    const double share = last / (1 + std::sqrt((1 - last) * (1 + last)));
    moduli.push_back(share * share);
  }
  return moduli;
}

/// cd(uK, k) from cos(u pi/2), or sn(uK, k) from sin(u pi/2).
Complex Ascend(Complex value, double k) {
  const std::vector<double> moduli = Moduli(k);
  for (std::size_t i = moduli.size(); i-- > 1;) {
    value = (1 + moduli[i]) * value / (1.0 + moduli[i] * value * value);
  }
  return value;
}

Complex EllipticCd(Complex u, double k) {
  return Ascend(std::cos(u * kPi / 2.0), k);
}

double EllipticSn(double u, double k) {
  return Ascend(std::sin(u * kPi / 2.0), k).real();
}

/// u of value = sn(uK, k).
Complex InverseSn(Complex value, double k) {
  const std::vector<double> moduli = Moduli(k);
  for (std::size_t i = 1; i < moduli.size(); ++i) {
    const Complex product = value * moduli[i - 1];
    value = 2.0 * value / ((1.0 + std::sqrt(1.0 - product * product)) * (1 + moduli[i]));
  }
  return 1.0 - 2.0 / kPi * std::acos(value);
}

}  // namespace

double Filter::MagnitudeAt(double w) const {
  Complex value = 1;
  for (const Complex& zero : zeros) value *= FactorAt(zero, w);
  for (const Complex& pole : poles) value /= FactorAt(pole, w);
  return std::abs(value);
}

double Filter::DelayAt(double w) const {
  double delay = 0;
  for (const Complex& zero : zeros) delay -= AdvanceAt(zero, w);
  for (const Complex& pole : poles) delay += AdvanceAt(pole, w);
  return delay;
}

Filter Filter::Scaled(double factor) const {
  Filter scaled = *this;
  for (Complex& pole : scaled.poles) pole *= factor;
  for (Complex& zero : scaled.zeros) zero *= factor;
  return scaled;
}

Filter operator*(const Filter& one, const Filter& other) {
  Filter product = one;
  product.poles.insert(product.poles.end(), other.poles.begin(), other.poles.end());
  product.zeros.insert(product.zeros.end(), other.zeros.begin(), other.zeros.end());
  return product;
}

Filter Butterworth(int order) {
  std::vector<Complex> poles;
  for (int k = 0; k < order; ++k) {
    poles.push_back(std::polar(1.0, kPi * (2 * k + order + 1) / (2.0 * order)));
  }
  return {UpperHalf(poles), {}};
}

/// The roots of the reverse Bessel polynomial, then scaled to half power at 1.
Filter Bessel(int order) {
  std::vector<double> coefficients(static_cast<std::size_t>(order) + 1, 1.0);  // the highest is 1
  for (int k = order - 1; k >= 0; --k) {
    const auto i = static_cast<std::size_t>(k);
    coefficients[i] = coefficients[i + 1] * (2.0 * order - k) * (k + 1) / (2.0 * (order - k));
  }
  Eigen::MatrixXd companion = Eigen::MatrixXd::Zero(order, order);
  for (int i = 0; i < order; ++i) {
    companion(i, order - 1) = -coefficients[static_cast<std::size_t>(i)];
    if (i > 0) companion(i, i - 1) = 1;
  }
  const Eigen::VectorXcd roots = companion.eigenvalues();
  const Filter filter = {UpperHalf({roots.begin(), roots.end()}), {}};
  double low = 0;
  double high = 10;
  for (int i = 0; i < 60; ++i) {
    const double middle = (low + high) / 2;
    (filter.MagnitudeAt(middle) > std::sqrt(0.5) ? low : high) = middle;
  }
  return filter.Scaled(1 / low);
}

Filter Chebyshev(int order, double ripple) {
  const double a = std::asinh(1 / DecibelRatio(ripple)) / order;
  std::vector<Complex> poles;
  for (int k = 0; k < order; ++k) {
    const double angle = kPi * (2 * k + 1) / (2.0 * order);
    poles.emplace_back(-std::sinh(a) * std::sin(angle), std::cosh(a) * std::cos(angle));
  }
  return {UpperHalf(poles), {}};
}

Filter InverseChebyshev(int order, double attenuation) {
  const double a = std::asinh(DecibelRatio(attenuation)) / order;
  std::vector<Complex> poles;
  Filter filter;
  for (int k = 0; k < order; ++k) {
    const double angle = kPi * (2 * k + 1) / (2.0 * order);
    const Complex root(-std::sinh(a) * std::sin(angle), -std::cosh(a) * std::cos(angle));
    poles.push_back(1.0 / root);
    if (std::cos(angle) > kReal) filter.zeros.emplace_back(0, 1 / std::cos(angle));
  }
  filter.poles = UpperHalf(poles);
  return filter;
}

Filter Elliptic(int order, double ripple, double attenuation) {
  const double passband = DecibelRatio(ripple);
  const double k1 = passband / DecibelRatio(attenuation);
  const double complement1 = std::sqrt((1 - k1) * (1 + k1));
  double complement = std::pow(complement1, order);
  std::vector<double> places;
  for (int i = 1; i <= order / 2; ++i) {
    places.push_back((2.0 * i - 1) / order);
    complement *= std::pow(EllipticSn(places.back(), complement1), 4);
  }
  const double k = std::sqrt((1 - complement) * (1 + complement));
  const Complex shift =
      -Complex(0, 1) / static_cast<double>(order) * InverseSn(Complex(0, 1 / passband), k1);
  Filter filter;
  for (const double place : places) {
    filter.zeros.emplace_back(0, 1 / (k * EllipticCd(place, k).real()));
    const Complex pole = Complex(0, 1) * EllipticCd(place - Complex(0, 1) * shift, k);
    filter.poles.emplace_back(-std::abs(pole.real()), std::abs(pole.imag()));
  }
  if (order % 2 == 1) {
    const Complex pole = Complex(0, 1) * EllipticCd(1.0 - Complex(0, 1) * shift, k);
    filter.poles.emplace_back(-std::abs(pole.real()), 0);
  }
  return filter;
}

Filter RealPoles(const std::vector<double>& magnitudes) {
  Filter filter;
  for (const double magnitude : magnitudes) filter.poles.emplace_back(-magnitude, 0);
  return filter;
}

}  // namespace polefit::families

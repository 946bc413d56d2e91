#include "exchange/fill_templates.h"

#include <cmath>
#include <vector>

#include "base/text_format.h"

namespace polefit {

namespace {

std::string Text(double value) {
  return ShortestNumber(value);
}

std::string Flat(double level, double /*none*/) {
  return Text(level);
}

/// The cosine lies between (1-a)/(1+a) and 1.
std::string RaisedCosine(double rollOff, double /*none*/) {
  const std::string a = Text(rollOff / 100);
  if (rollOff == 0) return "if(x < 1, 1, 0)";
  return "if(x <= (1-" + a + ")/(1+" + a + "), 1, if(x < 1, 0.5 + 0.5*cos(pi*((1+" + a +
         ")*x - (1-" + a + "))/(2*" + a + ")), 0))";
}

std::string RootRaisedCosine(double rollOff, double none) {
  return "sqrt(" + RaisedCosine(rollOff, none) + ")";
}

std::string Gaussian(double decibels, double /*none*/) {
  return "lin(-" + Text(decibels) + "*x^2)";
}

std::string Butterworth(double order, double /*none*/) {
  return "1/sqrt(1 + x^" + Text(2 * order) + ")";
}

/// The coefficients of T_n by rising powers: T_(n+1) = 2 x T_n - T_(n-1).
std::vector<double> ChebyshevPolynomial(int order) {
  std::vector<double> former = {1};
  std::vector<double> present = {0, 1};
  for (int n = 1; n < order; ++n) {
    std::vector<double> next(present.size() + 1);
    for (std::size_t i = 0; i < present.size(); ++i) next[i + 1] += 2 * present[i];
    for (std::size_t i = 0; i < former.size(); ++i) next[i] -= former[i];
    former = std::move(present);
    present = std::move(next);
  }
  return present;
}

/// "16*x^5 - 20*x^3 + 5*x"
std::string PolynomialText(const std::vector<double>& coefficients) {
  std::string text;
  for (std::size_t power = coefficients.size(); power-- > 0;) {
    const double coefficient = coefficients[power];
    if (coefficient == 0) continue;
    const std::string sign = coefficient < 0 ? "-" : "+";
    if (!text.empty()) text += " " + sign + " ";
    if (text.empty() && coefficient < 0) text = "-";
    const std::string size = Text(std::abs(coefficient));
    const std::string x = power == 0 ? "" : power == 1 ? "x" : "x^" + std::to_string(power);
    text += x.empty() ? size : size == "1" ? x : size + "*" + x;
  }
  return text;
}

std::string Chebyshev(double order, double ripple) {
  return "1/sqrt(1 + (lin(2*" + Text(ripple) + ") - 1)*(" +
         PolynomialText(ChebyshevPolynomial(static_cast<int>(order))) + ")^2)";
}

/// |B_n(jw)|^2 / B_n(0)^2 by rising powers of w^2, B_n the reverse Bessel polynomial with
/// b_k = (2n-k)! / (2^(n-k) k! (n-k)!).
std::vector<double> BesselSquare(int order) {
  std::vector<double> b;
  for (int k = 0; k <= order; ++k) {
    b.push_back(
        std::exp(std::lgamma(2 * order - k + 1) - std::lgamma(k + 1) - std::lgamma(order - k + 1)) *
        std::pow(2.0, k - order));
  }
  std::vector<double> square(b.size());
  for (std::size_t i = 0; i < b.size(); ++i) {
    for (std::size_t k = i % 2; k < b.size(); k += 2) {
      // (jw)^i (-jw)^k with i + k even.
      const double sign = (i + 3 * k) % 4 == 0 ? 1 : -1;
      square[(i + k) / 2] += sign * b[i] * b[k] / (b[0] * b[0]);
    }
  }
  return square;
}

double Value(const std::vector<double>& coefficients, double at) {
  double value = 0;
  for (std::size_t power = coefficients.size(); power-- > 0;)
    value = value * at + coefficients[power];
  return value;
}

/// With its 3 dB edge moved to x = 1.
std::string Bessel(double order, double /*none*/) {
  const std::vector<double> square = BesselSquare(static_cast<int>(order));
  double low = 0;
  double high = 100;  // w^2, beyond the edge of order 10
  while (high - low > 1e-14 * high) {
    const double middle = (low + high) / 2;
    (Value(square, middle) < 2 ? low : high) = middle;
  }
  std::string text = "1/sqrt(1";
  double scale = 1;
  for (std::size_t i = 1; i < square.size(); ++i) {
    scale *= low;
    text += Format(" + %.10g*x^%zu", square[i] * scale, 2 * i);
  }
  return text + ")";
}

std::string Pulse(double nanoseconds, double /*none*/) {
  return "abs(sinc(" + Text(nanoseconds / 1000) + "*f))";
}

std::string Cable(double decibels, double /*none*/) {
  return "lin(-" + Text(decibels) + "*sqrt(x))";
}

}  // namespace

const std::array<FillTemplate, 9> kFillTemplates = {{
    {"Flat", {{{"Level", 1, 0, 1e6, 6}, {}}}, Flat},
    {"Raised cosine, null at Freq Norm", {{{"Roll-off in %", 35, 0, 100, 3}, {}}}, RaisedCosine},
    {"Root raised cosine, null at Freq Norm",
     {{{"Roll-off in %", 35, 0, 100, 3}, {}}},
     RootRaisedCosine},
    {"Gaussian", {{{"Loss at Freq Norm in dB", 3, 0, 200, 4}, {}}}, Gaussian},
    {"Butterworth low-pass", {{{"Order", 5, 1, 40, 0}, {}}}, Butterworth},
    {"Chebyshev low-pass",
     {{{"Order", 5, 1, 10, 0}, {"Ripple in dB", 0.1, 0.0001, 20, 4}}},
     Chebyshev},
    {"Bessel low-pass", {{{"Order", 5, 1, 10, 0}, {}}}, Bessel},
    {"Spectrum of a rectangular pulse", {{{"Width in ns", 50, 0, 1e6, 4}, {}}}, Pulse},
    {"Cable, loss as the root of f", {{{"Loss at Freq Norm in dB", 6, 0, 200, 4}, {}}}, Cable},
}};

}  // namespace polefit

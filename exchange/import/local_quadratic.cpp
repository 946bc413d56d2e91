#include "exchange/import/local_quadratic.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace polefit {

namespace {

constexpr std::size_t kTerms = 3;

/// Polynomials 1, t, t^2 made orthogonal over the window one after the other: this stays exact
/// where the normal equations would lose half of the digits.
class OrthogonalFit {
 public:
  OrthogonalFit(const double* t, const double* y, std::size_t count) : count_(count) {
    for (std::size_t i = 0; i < count; ++i) residual_.push_back(y[i]);
    for (std::size_t term = 0; term < std::min(kTerms, count); ++term) AddTerm(term, t);
  }

  LocalFit At(double t) const {
    LocalFit fit;
    std::array<double, kTerms> value{};
    std::array<double, kTerms> slope{};
    for (std::size_t term = 0; term < terms_.size(); ++term) {
      value.at(term) = std::pow(t, static_cast<double>(term));
      slope.at(term) =
          term == 0 ? 0 : static_cast<double>(term) * std::pow(t, static_cast<double>(term) - 1);
      for (std::size_t lower = 0; lower < term; ++lower) {
        value.at(term) -= terms_[term].on.at(lower) * value.at(lower);
        slope.at(term) -= terms_[term].on.at(lower) * slope.at(lower);
      }
      fit.value += terms_[term].weight * value.at(term);
      fit.slope += terms_[term].weight * slope.at(term);
    }
    return fit;
  }

 private:
  struct Term {
    std::vector<double> values;
    /// How much of each lower term was taken out.
    std::array<double, kTerms> on{};
    double weight = 0;
  };

  static double Dot(const std::vector<double>& a, const std::vector<double>& b) {
    double sum = 0;
    for (std::size_t i = 0; i < a.size(); ++i) sum += a[i] * b[i];
    return sum;
  }

  void AddTerm(std::size_t power, const double* t) {
    Term term;
    for (std::size_t i = 0; i < count_; ++i) {
      term.values.push_back(std::pow(t[i], static_cast<double>(power)));
    }
    const double whole = Dot(term.values, term.values);
    for (std::size_t lower = 0; lower < terms_.size(); ++lower) {
      const std::vector<double>& other = terms_[lower].values;
      term.on.at(lower) = Dot(term.values, other) / Dot(other, other);
      for (std::size_t i = 0; i < count_; ++i) term.values[i] -= term.on.at(lower) * other[i];
    }
    // Points that can hardly be told apart count as one, which leaves too few for the last term.
    constexpr double kSquareOfNoise = 1e-24;
    const double own = Dot(term.values, term.values);
    term.weight = own > kSquareOfNoise * whole ? Dot(term.values, residual_) / own : 0;
    for (std::size_t i = 0; i < count_; ++i) residual_[i] -= term.weight * term.values[i];
    terms_.push_back(std::move(term));
  }

  std::size_t count_;
  std::vector<double> residual_;
  std::vector<Term> terms_;
};

}  // namespace

LocalFit FitLocally(const std::vector<double>& x, const std::vector<double>& y, std::size_t at,
                    int points) {
  const std::size_t count = std::min(x.size(), static_cast<std::size_t>(std::max(points, 1)));
  const std::size_t wanted = at - std::min(at, count / 2);
  const std::size_t first = std::min(wanted, x.size() - count);
  // Around the point and in parts of the window's width, so that no power loses digits.
  const double width = std::max(x[first + count - 1] - x[first], 1e-300);
  std::vector<double> t(count);
  for (std::size_t i = 0; i < count; ++i) t[i] = (x[first + i] - x[at]) / width;
  LocalFit fit = OrthogonalFit(t.data(), y.data() + first, count).At(0);
  fit.slope /= width;
  return fit;
}

std::vector<double> Smoothed(const std::vector<double>& x, const std::vector<double>& y,
                             int points) {
  std::vector<double> smooth(y.size());
  for (std::size_t i = 0; i < y.size(); ++i) smooth[i] = FitLocally(x, y, i, points).value;
  return smooth;
}

}  // namespace polefit

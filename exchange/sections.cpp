#include "exchange/sections.h"

#include <algorithm>
#include <cmath>
#include <complex>

namespace polefit {

namespace {

/// Poles or zeros that belong into one section.
struct Part {
  std::complex<double> root;  ///< the upper one
  Quadratic polynomial;       ///< 1 at s = 0
};

Part PartOf(const ResultLocation& location) {
  const std::complex<double> root = location.Upper();
  if (!location.isPair) return {root, {1, -1 / location.real, 0}};
  const double square = std::norm(root);
  return {root, {1, -2 * location.real / square, 1 / square}};
}

Quadratic Product(const Quadratic& one, const Quadratic& other) {
  return {one[0] * other[0], one[0] * other[1] + one[1] * other[0],
          one[0] * other[2] + one[1] * other[1] + one[2] * other[0]};
}

constexpr Quadratic kOne = {1, 0, 0};

class SectionBuilder {
 public:
  explicit SectionBuilder(const FilterResult& result) {
    for (const ResultLocation& location : result.locations) Sort(location);
  }

  std::vector<Section> Build() {
    while (zeroPairs_.size() > polePairs_.size()) JoinTwoPoles();
    PlaceZeroPairs();
    PlaceSingleZeros();
    std::stable_sort(
        sections_.begin(), sections_.end(),
        [](const Section& one, const Section& other) { return one.Quality() < other.Quality(); });
    return std::move(sections_);
  }

 private:
  void Sort(const ResultLocation& location) {
    const Part part = PartOf(location);
    if (location.kind == FactorKind::sigmaZero && location.isPole) {
      // The zero that it makes lossless stands right before it.
      sections_.push_back({singleZeros_.back().polynomial, part.polynomial});
      singleZeros_.pop_back();
    } else if (location.isPole) {
      (location.isPair ? polePairs_ : singlePoles_).push_back(part);
    } else {
      (location.isPair ? zeroPairs_ : singleZeros_).push_back(part);
    }
  }

  /// H(s) has no more zeros than poles, so that there are two.
  void JoinTwoPoles() {
    const Part last = singlePoles_.back();
    singlePoles_.pop_back();
    Part& other = singlePoles_.back();
    polePairs_.push_back(
        {-std::sqrt(last.root * other.root), Product(last.polynomial, other.polynomial)});
    singlePoles_.pop_back();
  }

  void PlaceZeroPairs() {
    std::stable_sort(polePairs_.begin(), polePairs_.end(), [](const Part& one, const Part& other) {
      return Section{kOne, one.polynomial}.Quality() > Section{kOne, other.polynomial}.Quality();
    });
    for (const Part& pole : polePairs_) {
      const auto nearest = std::min_element(
          zeroPairs_.begin(), zeroPairs_.end(), [&pole](const Part& one, const Part& other) {
            return std::abs(one.root - pole.root) < std::abs(other.root - pole.root);
          });
      if (nearest == zeroPairs_.end()) {
        free_.push_back({kOne, pole.polynomial});
      } else {
        sections_.push_back({nearest->polynomial, pole.polynomial});
        zeroPairs_.erase(nearest);
      }
    }
  }

  /// One for each single pole, then two for each pole pair that has no zeros yet.
  void PlaceSingleZeros() {
    for (const Part& pole : singlePoles_) sections_.push_back({TakeZero(), pole.polynomial});
    for (Section& section : free_) {
      section.numerator = TakeZero();
      section.numerator = Product(section.numerator, TakeZero());
      sections_.push_back(section);
    }
  }

  Quadratic TakeZero() {
    if (singleZeros_.empty()) return kOne;
    const Quadratic zero = singleZeros_.back().polynomial;
    singleZeros_.pop_back();
    return zero;
  }

  std::vector<Part> singlePoles_;
  std::vector<Part> polePairs_;
  std::vector<Part> singleZeros_;
  std::vector<Part> zeroPairs_;
  std::vector<Section> free_;  ///< pole pairs without zeros
  std::vector<Section> sections_;
};

}  // namespace

double Section::Frequency() const {
  return IsSecondOrder() ? 1 / std::sqrt(denominator[2]) : 1 / denominator[1];
}

double Section::Quality() const {
  return std::sqrt(denominator[2]) / denominator[1];
}

std::vector<Section> SectionsOf(const FilterResult& result) {
  std::vector<Section> sections = SectionBuilder(result).Build();
  for (double& coefficient : sections.front().numerator) coefficient *= result.gain;
  return sections;
}

Section InRadians(const Section& section, double angularUnit) {
  const double highest = section.denominator[section.IsSecondOrder() ? 2 : 1];
  const double power = section.IsSecondOrder() ? angularUnit * angularUnit : angularUnit;
  Section scaled = section;
  for (Quadratic* polynomial : {&scaled.numerator, &scaled.denominator}) {
    double unit = power / highest;
    for (double& coefficient : *polynomial) {
      coefficient *= unit;
      unit /= angularUnit;
    }
  }
  // Exactly, in spite of rounding.
  scaled.denominator[section.IsSecondOrder() ? 2 : 1] = 1;
  return scaled;
}

}  // namespace polefit

#include "solver/model/step_response.h"

#include <Eigen/Core>
#include <algorithm>
#include <cmath>
#include <unsupported/Eigen/MatrixFunctions>

#include "solver/problem/problem.h"

namespace polefit {

namespace {

/// 1 + first s + second s^2: a numerator or a denominator with the value 1 at s = 0.
struct Quadratic {
  double first = 0;
  double second = 0;
};

/// A part of H(s) with as many poles as its order, and not more zeros.
struct Section {
  int order = 2;
  Quadratic poles;
  Quadratic zeros;
};

Quadratic PairOf(double a, double b, double side) {
  const double square = a * a + b * b;
  return {side * 2 * a / square, 1 / square};
}

Quadratic ProductOf(double one, double other) {
  return {1 / one + 1 / other, 1 / (one * other)};
}

/// Gathers the factors of H(s) and makes sections of them.
class SectionBuilder {
 public:
  explicit SectionBuilder(const std::vector<Location>& locations) {
    for (const Location& location : locations) Add(location);
    JoinSigmaPoles();
  }

  /// Every numerator finds its place: H(s) has not more zeros than poles. The sections with room
  /// for two zeros are filled from the largest poles down, where zeros mostly lie.
  std::vector<Section> Sections() {
    std::sort(sections_.begin(), sections_.end(), [](const Section& one, const Section& other) {
      return one.order > other.order ||
             (one.order == other.order && one.poles.second < other.poles.second);
    });
    std::size_t next = 0;
    for (const Quadratic& zeros : pairs_) sections_[next++].zeros = zeros;
    if (hasSingle_) {
      // The section of first order is the last one, when there is one.
      Section& free = sections_.back().order == 1 ? sections_.back() : sections_[next];
      free.zeros = single_;
    }
    sections_.insert(sections_.end(), allPasses_.begin(), allPasses_.end());
    return std::move(sections_);
  }

 private:
  void Add(const Location& at) {
    switch (at.kind) {
      case FactorKind::sigmaPole:
        sigmaPoles_.push_back(-at.real);
        break;
      case FactorKind::polePair:
        sections_.push_back({2, PairOf(-at.real, at.imaginary, 1), {}});
        break;
      case FactorKind::sigmaZero:
        AddSigmaZero(at);
        break;
      case FactorKind::omegaZero:
        pairs_.push_back({0, 1 / (at.imaginary * at.imaginary)});
        break;
      case FactorKind::zeroPair:
        pairs_.push_back(PairOf(-at.real, at.imaginary, 1));
        break;
      case FactorKind::zeroQuad:
        pairs_.push_back(PairOf(at.real, at.imaginary, 1));
        pairs_.push_back(PairOf(at.real, at.imaginary, -1));
        break;
    }
  }

  void AddSigmaZero(const Location& at) {
    if (at.bringsPole) {
      const Section allPass = {1, {1 / at.real, 0}, {-1 / at.real, 0}};
      allPasses_.insert(allPasses_.end(), static_cast<std::size_t>(at.multiplicity), allPass);
    } else if (at.onBothSides) {
      pairs_.push_back({0, -1 / (at.real * at.real)});
    } else {
      hasSingle_ = true;
      single_ = {-1 / at.real, 0};
    }
  }

  /// Two and two, so that pairs of zeros find room there too.
  void JoinSigmaPoles() {
    std::sort(sigmaPoles_.begin(), sigmaPoles_.end());
    for (std::size_t i = 0; i + 1 < sigmaPoles_.size(); i += 2) {
      sections_.push_back({2, ProductOf(sigmaPoles_[i], sigmaPoles_[i + 1]), {}});
    }
    if (sigmaPoles_.size() % 2 == 1) sections_.push_back({1, {1 / sigmaPoles_.back(), 0}, {}});
  }

  std::vector<double> sigmaPoles_;
  std::vector<Section> sections_;
  std::vector<Section> allPasses_;
  std::vector<Quadratic> pairs_;
  Quadratic single_;
  bool hasSingle_ = false;
};

/// x' = A x + B u, y = C x + D u of the whole cascade. B stands as the last column of A and u as a
/// last, constant state.
class Cascade {
 public:
  explicit Cascade(const std::vector<Section>& sections) {
    Eigen::Index size = 1;
    for (const Section& section : sections) size += section.order;
    system_.setZero(size, size);
    output_.setZero(size);
    output_[size - 1] = 1;
    Eigen::Index at = 0;
    for (const Section& section : sections) {
      Append(section, at);
      at += section.order;
    }
  }

  double Jump() const { return output_[output_.size() - 1]; }

  /// The outputs after a unit step, at even steps in normalised time: block by block, since what a
  /// state gives in the next steps is one product.
  std::vector<double> Outputs(double step, std::size_t count) const {
    constexpr Eigen::Index kBlock = 32;
    const Eigen::MatrixXd carry = (system_ * step).exp();
    Eigen::MatrixXd ahead(kBlock, system_.rows());
    ahead.row(0) = output_;
    for (Eigen::Index i = 1; i < kBlock; ++i) ahead.row(i) = ahead.row(i - 1) * carry;
    Eigen::MatrixXd leap = carry;
    for (Eigen::Index steps = 1; steps < kBlock; steps *= 2) leap = (leap * leap).eval();
    Eigen::VectorXd state = Eigen::VectorXd::Zero(system_.rows());
    state[state.size() - 1] = 1;
    std::vector<double> outputs;
    outputs.reserve(count + kBlock);
    while (outputs.size() < count) {
      const Eigen::VectorXd block = ahead * state;
      outputs.insert(outputs.end(), block.begin(), block.end());
      state = leap * state;
    }
    outputs.resize(count);
    return outputs;
  }

 private:
  /// The states are the input seen through the poles and its derivative, in units of the section's
  /// own frequency so that slow and fast sections weigh alike. Its input is the output so far.
  void Append(const Section& section, Eigen::Index at) {
    const Eigen::RowVectorXd input = output_;
    if (section.order == 1) {
      const double speed = 1 / section.poles.first;
      system_.row(at) = speed * input;
      system_(at, at) -= speed;
      const double direct = section.zeros.first * speed;
      output_ = direct * input;
      output_[at] += 1 - direct;
      return;
    }
    const double speed = 1 / std::sqrt(section.poles.second);
    const double damping = section.poles.first * speed;
    system_(at, at + 1) = speed;
    system_.row(at + 1) = speed * input;
    system_(at + 1, at) -= speed;
    system_(at + 1, at + 1) -= speed * damping;
    const double direct = section.zeros.second * speed * speed;
    output_ = direct * input;
    output_[at] += 1 - direct;
    output_[at + 1] += section.zeros.first * speed - direct * damping;
  }

  Eigen::MatrixXd system_;
  Eigen::RowVectorXd output_;
};

StepResponse Scaled(const TransferFunction& h, const Cascade& cascade, double stepNanoseconds,
                    std::size_t count) {
  StepResponse response;
  response.final = h.Gain();
  response.jump = h.Gain() * cascade.Jump();
  response.values = cascade.Outputs(stepNanoseconds / h.GetProblem().DelayUnit(), count);
  for (double& value : response.values) value *= h.Gain();
  for (std::size_t i = 0; i < count; ++i) {
    response.nanoseconds.push_back(static_cast<double>(i) * stepNanoseconds);
  }
  return response;
}

/// Where the slowest pole has died down by a factor of 10,000, in ns.
double LongestTime(const TransferFunction& h) {
  constexpr double kTimeConstants = 9.2;
  double slowest = h.LargestLocation();
  for (const Location& location : h.Locations()) {
    if (location.IsPole() || location.bringsPole) {
      slowest = std::min(slowest, std::abs(location.real));
    }
  }
  return kTimeConstants / slowest * h.GetProblem().DelayUnit();
}

}  // namespace

StepResponse StepResponseOf(const TransferFunction& h, double stepNanoseconds, std::size_t count) {
  return Scaled(h, Cascade(SectionBuilder(h.Locations()).Sections()), stepNanoseconds, count);
}

StepResponse SettledStepResponse(const TransferFunction& h, std::size_t count) {
  constexpr std::size_t kCoarse = 2000;
  constexpr double kSettled = .01;
  constexpr double kMargin = 1.25;
  const Cascade cascade(SectionBuilder(h.Locations()).Sections());
  const double longest = LongestTime(h);
  const StepResponse coarse = Scaled(h, cascade, longest / (kCoarse - 1), kCoarse);
  double largest = 0;
  for (const double value : coarse.values) largest = std::max(largest, std::abs(value));
  std::size_t last = kCoarse - 1;
  while (last > 1 && std::abs(coarse.values[last] - coarse.final) < kSettled * largest) --last;
  const double span = std::min(longest, kMargin * coarse.nanoseconds[last]);
  return Scaled(h, cascade, span / static_cast<double>(count - 1), count);
}

}  // namespace polefit

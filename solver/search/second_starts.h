#pragma once

#include <Eigen/Core>
#include <cstdint>

#include "solver/problem/problem.h"
#include "solver/search/listener.h"

namespace polefit {

/// Equal on every machine (W. Press et al., Numerical Recipes in C, 1992, section 7.1).
class RandomNumbers {
 public:
  /// In (-1, 1).
  double Signed() { return 2 * Unit() - 1; }
  /// In (0, 1).
  double Unit();
  /// In (low, high), its logarithm evenly spread.
  double Logarithmic(double low, double high);

 private:
  std::uint32_t state_ = 20231;
};

/// Further points to start from, in turn: a standard constellation, the best point perturbed, a
/// random point. They need not lie inside the bounds.
class SecondStarts {
 public:
  explicit SecondStarts(const Problem& problem) : problem_(problem) {}

  /// The next point; `best` is the best one so far. `kind` tells what it is.
  Eigen::VectorXd Next(const Eigen::VectorXd& best, StartKind& kind);

 private:
  void PlaceStandard(Eigen::VectorXd& parameters, int number) const;
  void SpreadZeros(Eigen::VectorXd& parameters) const;
  void Perturb(Eigen::VectorXd& parameters, double size);
  void Scatter(Eigen::VectorXd& parameters, bool isWide);

  const Problem& problem_;
  RandomNumbers random_;
  int count_ = 0;
};

}  // namespace polefit

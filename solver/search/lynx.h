#pragma once

#include <Eigen/Core>
#include <vector>

#include "solver/model/constellation.h"
#include "solver/model/model.h"
#include "solver/model/objective.h"
#include "solver/problem/options.h"
#include "solver/search/wren.h"

namespace polefit {

/// LYNX, the middle solver: moves all omega-axis zeros but the first so that the sidelobe peaks of
/// |H| between them, and after the last one up to the largest location, are equal.
///
/// For given other locations this solution exists and is unique, and it has the lowest possible
/// highest sidelobe: it is the weighted Chebyshev problem of a polynomial in w^2.
class Lynx {
 public:
  /// `largest` is the end of the last sidelobe, normalised.
  Lynx(const Constellation& constellation, double largest, const Options& options,
       Listener& listener);

  /// Moves LYNX's part of `parameters`, from where it stands, to equal peaks. False when the peaks
  /// still differ by more than max(tolerance[1], 1e-6) nepers.
  bool Equalise(Eigen::VectorXd& parameters);

  /// The peaks that the last equalisation ended with.
  const std::vector<Peak>& Peaks() const { return peaks_; }

  /// How often Newton's method failed and the Remez exchange helped.
  int RemezCount() const { return remezCount_; }

  /// Turns the derivatives of `fit` by all moved parameters into those by ORCA's variables, the
  /// equalised zeros following them. `parameters` are those of the last equalisation.
  void Eliminate(const Eigen::VectorXd& parameters, Fit& fit);

 private:
  double FirstZero(const Eigen::VectorXd& parameters) const;
  bool IsOrdered(const Eigen::VectorXd& parameters) const;
  double FindPeaks(const Eigen::VectorXd& parameters, std::vector<Peak>& peaks);
  void FindSlopes(const Eigen::VectorXd& parameters);
  Eigen::VectorXd NewtonStep() const;
  bool TakeStep(const Eigen::VectorXd& step, Eigen::VectorXd& parameters);
  void Newton(Eigen::VectorXd& parameters);
  void Remez(Eigen::VectorXd& parameters);
  void InterpolateZeros(const std::vector<double>& references, Eigen::VectorXd& parameters) const;

  const Constellation& constellation_;
  /// The factors without the zeros that are equalised; the weight of the Chebyshev problem.
  Constellation rest_;
  int firstZero_ = 0;
  double largest_;
  const Options& options_;
  Listener& listener_;

  std::vector<Peak> peaks_;
  std::vector<LogDerivatives> slopes_;
  double mismatch_ = 0;
  int remezCount_ = 0;
};

}  // namespace polefit

#pragma once

#include <Eigen/Core>
#include <array>
#include <cstddef>
#include <vector>

#include "solver/constellation.h"
#include "solver/model.h"

namespace polefit {

/// The data rows in the units of the error measures.
///
/// Passband row i: a_i = inputs_i |H(w_i)| / gain and the error e_i = gain a_i - targets_i, so
/// that inputs and targets hold the row's whole weight. Delay row j: the error
/// d_j = offsets_j + slopes_j t(w_j) - levels_j T0, t in normalised seconds and T0 in ns.
struct DataRows {
  Eigen::ArrayXd frequencies;  ///< normalised
  Eigen::ArrayXd inputs;
  Eigen::ArrayXd targets;

  Eigen::ArrayXd delayFrequencies;  ///< normalised
  Eigen::ArrayXd delayOffsets;
  Eigen::ArrayXd delaySlopes;
  Eigen::ArrayXd delayLevels;
  /// T0 in ns; 0 leaves it free.
  double wantedDelay = 0;

  /// The weight of mean(e^2) in F, beside mean(d^2).
  double magnitudeWeight = 1;
};

/// F = magnitudeWeight * mean(e^2) + mean(d^2) at one set of locations, with the gain and a free
/// delay constant at their best values, and what it consists of.
struct Fit {
  double cost = 0;
  double gain = 0;
  double delayConstant = 0;  ///< T0 in ns
  double meanSquare = 0;     ///< mean(e^2)
  double delayMeanSquare = 0;
  double largestError = 0;  ///< of |e|

  /// By the moved parameters.
  Eigen::VectorXd gradient;
  Eigen::MatrixXd hessian;
  /// The Hessian without second derivatives of the errors; only where it was asked for.
  Eigen::MatrixXd gaussNewton;
};

/// The error measure with its derivatives. The work is linear in the number of rows.
class Objective {
 public:
  Objective(const Constellation& constellation, const DataRows& rows, bool wantsGaussNewton);

  /// Fills `fit` and returns true, or returns false where there is no finite error.
  bool Evaluate(const Eigen::VectorXd& parameters, Fit& fit);

  /// F with a given gain, without derivatives. A free delay constant is at its best value.
  double CostWithGain(const Eigen::VectorXd& parameters, double gain) const;

 private:
  /// Some data rows side by side; the last group is filled up with rows that count for nothing.
  struct PassbandGroup {
    Rows frequency;
    Rows input;
    Rows target;
    Rows obtained;  ///< input |H| / gain
  };
  struct DelayGroup {
    Rows frequency;
    Rows offset;
    Rows slope;
    Rows level;
    Rows error;
  };
  /// What the derivatives of one group are multiplied by in the sums over the rows.
  struct Weights {
    Rows gradient;  ///< first derivatives in the gradient, second ones in the Hessian
    Rows outer;     ///< products of two first derivatives
    Rows square;    ///< the square of an omega-axis zero's first derivative
    Rows cross;     ///< first derivatives in the mixed derivatives by the eliminated constant
  };
  /// Sums over the rows, each kept as one sum a lane.
  struct Sums {
    std::vector<Rows> gradient;
    std::vector<Rows> cross;
    std::vector<Rows> products;  ///< lower triangle, row by row
    void Clear(std::size_t size);
  };

  void EvaluateMagnitude(const Eigen::VectorXd& parameters, Fit& fit);
  void EvaluateDelay(const Eigen::VectorXd& parameters, Fit& fit);
  double FindObtained(const Eigen::VectorXd& parameters, Fit& fit);
  void FindDelayErrors(const Eigen::VectorXd& parameters, Fit& fit);
  template <class Derivatives>
  void Derive(Derivatives derivatives);
  void AddGroup(const Weights& weights, Sums& sums) const;
  void AddDerivatives(double scale, double constantSquare, Fit& fit) const;
  static void AddReduced(const Sums& sums, double scale, double constantSquare,
                         Eigen::MatrixXd& to);

  const Constellation& constellation_;
  const DataRows& rows_;
  bool wantsGaussNewton_;
  std::vector<PassbandGroup> passband_;
  std::vector<DelayGroup> delays_;
  std::vector<Factor> moved_;
  /// One group's derivatives: the first ones an entry a moved parameter, the second ones a factor.
  std::vector<Rows> first_;
  std::vector<std::array<Rows, 2>> second_;
  std::vector<bool> isOmegaZero_;  ///< an entry a moved parameter
  Sums sums_;
  Sums gaussSums_;
};

}  // namespace polefit

#pragma once

#include <Eigen/Core>
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
  /// What the derivatives of one block of rows are multiplied by in the sums over the rows.
  struct BlockWeights {
    Rows gradient;  ///< first derivatives in the gradient, second ones in the Hessian
    Rows outer;     ///< products of two factors' first derivatives
    Rows own;       ///< products of one factor's first derivatives
    Rows cross;     ///< first derivatives in the mixed derivatives by the eliminated constant
  };
  struct Sums {
    Eigen::VectorXd gradient;
    Eigen::VectorXd cross;
    Eigen::MatrixXd products;  ///< lower triangle
    void Clear(int size);
  };

  void EvaluateMagnitude(const Eigen::VectorXd& parameters, Fit& fit);
  void EvaluateDelay(const Eigen::VectorXd& parameters, Fit& fit);
  void AddMagnitudeBlock(const Rows& a, const Rows& targets, Fit& fit);
  void AddBlock(const BlockWeights& weights, Sums& sums) const;
  void AddOwn(std::size_t index, std::size_t part, const BlockWeights& weights, Sums& sums) const;
  void AddProducts(const Rows& outer, int parameter, std::size_t other, Sums& sums) const;
  void Finish(const Sums& sums, double scale, double constantSquare, Eigen::MatrixXd& to) const;

  const Constellation& constellation_;
  const DataRows& rows_;
  bool wantsGaussNewton_;
  std::vector<Factor> moved_;
  /// One block's derivatives, an entry a moved factor.
  std::vector<FactorDerivatives<Rows>> derivatives_;
  Sums sums_;
  Sums gaussSums_;
};

}  // namespace polefit

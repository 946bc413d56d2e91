#pragma once

#include <Eigen/Core>
#include <array>
#include <cstddef>
#include <vector>

#include "solver/model/constellation.h"
#include "solver/model/model.h"

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
  Eigen::ArrayXd weights;  ///< inputs / Yin = targets / Yout

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
  /// The Hessian without second derivatives of the errors: the Gauss-Newton model of F.
  Eigen::MatrixXd gaussNewton;
};

/// The error measure with its derivatives. The work is linear in the number of rows.
class Objective {
 public:
  Objective(const Constellation& constellation, const DataRows& rows);
  Objective(const Objective&) = delete;
  Objective& operator=(const Objective&) = delete;

  /// Fills `fit` and returns true, or returns false where there is no finite error or no positive
  /// gain.
  bool Evaluate(const Eigen::VectorXd& parameters, Fit& fit);

  /// As above but without derivatives: their members of `fit` stay as they are.
  bool EvaluateErrors(const Eigen::VectorXd& parameters, Fit& fit);

  /// F with a given gain, without derivatives. A free delay constant is at its best value.
  double CostWithGain(const Eigen::VectorXd& parameters, double gain) const;

 private:
  static constexpr std::size_t kFactorsARoot = 8;
  struct PassbandChunk {
    std::size_t rows = 0;
    Chunk frequency;
    Chunk input;
    Chunk target;
    Chunk obtained;  ///< input |H| / gain
  };
  struct DelayChunk {
    std::size_t rows = 0;
    Chunk frequency;
    Chunk offset;
    Chunk slope;
    Chunk level;
    Chunk error;
  };
  /// What the derivatives are multiplied by in the sums over the rows.
  struct Weights {
    Chunk gradient;  ///< first derivatives in the gradient, second ones in the Hessian
    Chunk square;    ///< products of two first derivatives
    Chunk cross;     ///< first derivatives in the mixed derivatives by the eliminated constant
    /// Whether `gradient` too weighs products of first derivatives: where those are of ln a.
    bool isLogarithmic;
  };

  bool IsMoved(const Factor& factor) const {
    return factor.parameter < constellation_.MovedCount();
  }
  void AddMagnitude(Fit& fit);
  void AddDelay(Fit& fit);
  double FindObtained(Fit& fit);
  void MultiplyMagnitudes(std::size_t first, PassbandChunk& chunk) const;
  double FindDelayErrors(Fit& fit);
  void AddChunk(std::size_t rows, Fit& fit);
  void AddProducts(std::size_t rows, Fit& fit);
  void Eliminate(double constantSquare, Fit& fit) const;

  const Constellation& constellation_;
  const DataRows& rows_;
  std::vector<PassbandChunk> passband_;
  std::vector<DelayChunk> delays_;
  std::vector<PlacedFactor> factors_;
  /// One chunk's, an entry a factor; and in there the first derivative by each moved parameter.
  std::vector<FactorDerivatives<Chunk>> derivatives_;
  std::vector<const Chunk*> first_;
  std::vector<bool> isOmegaZero_;  ///< an entry a moved parameter
  Weights weights_;
  /// Mixed derivatives by the moved parameters and the eliminated constant.
  Eigen::VectorXd cross_;
  Eigen::VectorXd gaussCross_;  ///< without second derivatives of the errors
};

}  // namespace polefit

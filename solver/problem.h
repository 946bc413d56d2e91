#pragma once

#include <Eigen/Core>
#include <string>
#include <vector>

#include "solver/constellation.h"
#include "solver/objective.h"
#include "solver/options.h"

namespace polefit {

/// A passband or delay point as typed, in file order.
struct PassbandPoint {
  double frequency = 0;  ///< MHz
  double yin = 0;
  double yout = 0;
  double weight = 1;
};
struct DelayPoint {
  double frequency = 0;  ///< MHz
  double tx = 0;         ///< ns
};

/// A fitting problem, checked and in numbers.
struct Problem {
  double freqNorm = 1;  ///< MHz
  bool wantsDelay = false;
  bool usesWeights = false;
  double inputPower = 0;        ///< Ipower
  double delayRipplePower = 0;  ///< DelRipplePower
  double lowest = 0;            ///< LowestX_Y
  double largest = 0;           ///< maxX_Y
  double typedGain = 1;

  std::vector<PassbandPoint> passband;
  std::vector<DelayPoint> delay;
  DataRows rows;

  Constellation constellation;
  /// Typed right-half-plane zeros, which keep their side; an entry a factor.
  std::vector<bool> isRightHalf;
  Eigen::VectorXd typedParameters;
  /// The bounds of ORCA's variables.
  Eigen::VectorXd lower;
  Eigen::VectorXd upper;

  Options options;

  bool Equalises() const { return constellation.lynxCount > 0; }
  /// Nanoseconds in one normalised second.
  double DelayUnit() const;
  int PoleCount() const;
  int ZeroCount() const;
};

}  // namespace polefit

#pragma once

#include <Eigen/Core>
#include <array>
#include <string>
#include <vector>

#include "solver/model/constellation.h"
#include "solver/model/objective.h"
#include "solver/problem/options.h"

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
  /// The units that Yin, Yout and TX are typed in, each one for its whole column; 0: exact.
  double yinUnit = 0;
  double youtUnit = 0;
  double txUnit = 0;

  std::array<int, 2> poleCounts = {};  ///< sigma-axis poles, pairs
  std::array<int, 3> zeroCounts = {};  ///< omega-axis zeros, pairs, quads
  int sigmaZeros = 0;                  ///< 2 for a doublet
  int losslessPoles = 0;               ///< which a lossless sigma zero brings with it

  Constellation constellation;
  /// Typed right-half-plane zeros, which keep their side; an entry a factor.
  std::vector<bool> isRightHalf;
  /// Locations that are not typed and come from the points; an entry a factor. Until they are
  /// filled, rough values stand for them.
  std::vector<bool> isFromPoints;
  Eigen::VectorXd typedParameters;
  /// All of ORCA's variables were filled from the points.
  bool startsFromPoints = false;
  /// The bounds of ORCA's variables.
  Eigen::VectorXd lower;
  Eigen::VectorXd upper;

  Options options;

  bool Equalises() const { return constellation.lynxCount > 0; }
  /// Nanoseconds in one normalised second.
  double DelayUnit() const;
  /// The order of H(s).
  int PoleCount() const { return poleCounts[0] + 2 * poleCounts[1] + losslessPoles; }
  int ZeroCount() const {
    return 2 * (zeroCounts[0] + zeroCounts[1]) + 4 * zeroCounts[2] + sigmaZeros;
  }
};

}  // namespace polefit

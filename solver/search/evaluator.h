#pragma once

#include <Eigen/Core>
#include <functional>
#include <limits>
#include <optional>
#include <vector>

#include "solver/model/objective.h"
#include "solver/problem/problem.h"
#include "solver/search/listener.h"
#include "solver/search/lynx.h"

namespace polefit {

/// One set of locations and its fit, the equalised zeros eliminated.
struct Iterate {
  Eigen::VectorXd parameters;
  Fit fit;
  /// The equalised sidelobes; empty when zeros are not equalised.
  std::vector<Peak> peaks;
  bool isFinite = false;

  double Cost() const { return isFinite ? fit.cost : std::numeric_limits<double>::infinity(); }
};

/// The model evaluations of a run: counts them, keeps the best point, and stops at the limit or
/// when the user asks for it.
class Evaluator {
 public:
  /// `isStopRequested` is asked before every evaluation but the first.
  Evaluator(const Problem& problem, Listener& listener, std::function<bool()> isStopRequested);

  /// Evaluates at `iterate.parameters`, whose equalised zeros are only where LYNX begins. False
  /// when there is no finite error, or when the run has been stopped.
  bool Evaluate(Iterate& iterate);

  /// Why no further evaluation is made, if so.
  std::optional<EndReason> Stopped() const { return stopped_; }
  int Count() const { return count_; }
  int Left() const { return problem_.options.maxEvaluations - count_; }

  /// An F as good as 0: errors 200 dB below the data.
  double Negligible() const { return negligible_; }

  /// Begins the search for the best point anew.
  void ForgetBest() { best_.isFinite = false; }
  const Iterate& Best() const { return best_; }

  /// How many evaluations failed because the sidelobes could not be made equal.
  int RetryCount() const { return retryCount_; }

 private:
  const Problem& problem_;
  Objective objective_;
  Lynx lynx_;
  double negligible_;
  std::function<bool()> isStopRequested_;
  std::optional<EndReason> stopped_;
  Iterate best_;
  int count_ = 0;
  int retryCount_ = 0;
};

}  // namespace polefit

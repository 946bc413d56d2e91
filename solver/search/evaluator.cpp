#include "solver/search/evaluator.h"

#include <cmath>
#include <utility>

namespace polefit {

Evaluator::Evaluator(const Problem& problem, Listener& listener,
                     std::function<bool()> isStopRequested)
    : problem_(problem),
      objective_(problem.constellation, problem.rows),
      lynx_(problem.constellation, problem.largest, problem.options, listener),
      negligible_(1e-20 * problem.rows.magnitudeWeight * problem.rows.targets.square().mean()),
      isStopRequested_(std::move(isStopRequested)) {}

bool Evaluator::Evaluate(Iterate& iterate) {
  iterate.isFinite = false;
  if (!stopped_ && Left() <= 0) stopped_ = EndReason::evalMax;
  // The first evaluation is always made, so that there is a point to report.
  if (!stopped_ && count_ > 0 && isStopRequested_()) stopped_ = EndReason::requested;
  if (stopped_) return false;
  ++count_;
  if (problem_.Equalises() && !lynx_.Equalise(iterate.parameters)) {
    ++retryCount_;
    return false;
  }
  if (!objective_.Evaluate(iterate.parameters, iterate.fit)) return false;
  if (problem_.Equalises()) {
    lynx_.Eliminate(iterate.parameters, iterate.fit);
    iterate.peaks = lynx_.Peaks();
  }
  // A sum overflows or is not a number where an entry is.
  iterate.isFinite = std::isfinite(iterate.fit.hessian.sum() + iterate.fit.gradient.sum());
  if (iterate.isFinite && iterate.Cost() < best_.Cost()) best_ = iterate;
  return iterate.isFinite;
}

}  // namespace polefit

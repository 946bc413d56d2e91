#include "plots/location_trust.h"

#include <cmath>

#include "solver/report/deviations.h"
#include "solver/report/locations.h"
#include "solver/search/endings.h"
#include "solver/search/evaluator.h"

namespace polefit {

namespace {

double Told(double deviation, bool isDetermined) {
  return isDetermined && std::isfinite(deviation) ? deviation : 0;
}

}  // namespace

std::vector<Deviation> DeviationsOf(const Problem& problem) {
  std::vector<Deviation> deviations(problem.constellation.factors.size());
  Listener nobody;
  Evaluator evaluator(problem, nobody, [] { return false; });
  Iterate point;
  point.parameters = problem.typedParameters;
  if (!evaluator.Evaluate(point)) return deviations;
  std::vector<LocationFigures> locations = LocationsOf(problem, point);
  AddDeviations(JudgeTrust(problem, point, locations, RoundingCost(problem, point)), locations);
  for (const LocationFigures& location : locations) {
    if (location.isOwnPole) continue;
    const bool isDetermined = location.IsDetermined();
    deviations.at(location.factor) = {Told(location.real.deviation, isDetermined),
                                      Told(location.imaginary.deviation, isDetermined)};
  }
  return deviations;
}

}  // namespace polefit

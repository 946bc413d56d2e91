#include "solver/search/sidelobes.h"

#include <algorithm>
#include <limits>

#include "solver/problem/problem.h"

namespace polefit {

std::vector<Peak> FindSidelobes(const Problem& problem, const std::vector<double>& parameters) {
  std::vector<double> zeros;
  for (const Factor& factor : problem.constellation.factors) {
    if (factor.kind == FactorKind::omegaZero) zeros.push_back(parameters[factor.Parameter(0)]);
  }
  std::sort(zeros.begin(), zeros.end());
  Listener nobody;
  const LogCurve curve(problem.constellation,
                       Eigen::Map<const Eigen::VectorXd>(
                           parameters.data(), static_cast<Eigen::Index>(parameters.size())));
  std::vector<Peak> peaks;
  for (std::size_t i = 0; i < zeros.size(); ++i) {
    const bool isLast = i + 1 == zeros.size();
    const double to = isLast ? std::max(problem.largest, 10 * zeros[i]) : zeros[i + 1];
    if (to > zeros[i]) {
      peaks.push_back(FindPeak(curve, {zeros[i], to, isLast}, problem.options, nobody));
    } else {
      peaks.push_back({zeros[i], -std::numeric_limits<double>::infinity(), false});
    }
  }
  return peaks;
}

}  // namespace polefit

#include "solver/search/root_allotment.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace polefit {

namespace {

using Root = std::complex<double>;

/// A root this much closer to an axis than to 0 lies on it.
constexpr double kOnAxis = 1e-7;

bool IsNearer(const Root& one, const Root& other) {
  return std::abs(one) < std::abs(other);
}

std::vector<Root>::iterator Farthest(std::vector<Root>& pairs) {
  return std::max_element(pairs.begin(), pairs.end(), IsNearer);
}

/// A polynomial with too many real roots has drawn a pair apart along the axis.
void JoinSingles(AllottedRoots& roots) {
  constexpr double kJustOffAxis = .02;
  std::sort(roots.singles.begin(), roots.singles.end());
  roots.pairs.emplace_back(std::sqrt(roots.singles[0] * roots.singles[1]), kJustOffAxis);
  roots.singles.erase(roots.singles.begin(), roots.singles.begin() + 2);
}

void SplitFarthestPair(AllottedRoots& roots, int missing) {
  const auto farthest = Farthest(roots.pairs);
  const double size = std::abs(*farthest);
  roots.pairs.erase(farthest);
  if (missing == 1) {
    roots.singles.push_back(size);
  } else {
    roots.singles.insert(roots.singles.end(), {.8 * size, 1.25 * size});
  }
}

/// Takes the roots out that `keyOf` puts first.
template <typename Key>
std::vector<Root> TakeFirst(std::vector<Root>& roots, std::size_t count, Key keyOf) {
  std::stable_sort(roots.begin(), roots.end(), [&keyOf](const Root& one, const Root& other) {
    return keyOf(one) < keyOf(other);
  });
  const auto end = roots.begin() + static_cast<std::ptrdiff_t>(std::min(count, roots.size()));
  std::vector<Root> taken(roots.begin(), end);
  roots.erase(roots.begin(), end);
  return taken;
}

/// A double root in w^2 comes out as two close ones.
std::vector<double> OmegaZeros(std::vector<Root> roots, int count) {
  std::sort(roots.begin(), roots.end(), IsNearer);
  std::vector<double> zeros;
  for (std::size_t i = 0; i + 1 < roots.size(); i += 2) {
    zeros.push_back((std::sqrt(std::abs(roots[i])) + std::sqrt(std::abs(roots[i + 1]))) / 2);
  }
  while (std::ssize(zeros) < count) zeros.push_back(1.3 * (zeros.empty() ? 1 : zeros.back()));
  return zeros;
}

/// A quad's root stands twice in |H|^2: the two pairs that are nearest each other.
Root TakeQuad(std::vector<Root>& pairs) {
  std::size_t first = 0;
  std::size_t second = 1;
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    for (std::size_t k = i + 1; k < pairs.size(); ++k) {
      const double distance = std::abs(pairs[i] - pairs[k]);
      if (distance >= least) continue;
      least = distance;
      first = i;
      second = k;
    }
  }
  const Root quad = (pairs[first] + pairs[second]) / 2.0;
  pairs.erase(pairs.begin() + static_cast<std::ptrdiff_t>(second));
  pairs.erase(pairs.begin() + static_cast<std::ptrdiff_t>(first));
  return quad;
}

}  // namespace

AllottedRoots RootsInS(const Eigen::VectorXcd& x) {
  constexpr double kJustOffAxis = .05;
  AllottedRoots roots;
  for (const Root& square : x) {
    const Root root = std::sqrt(-square);
    const double size = std::abs(root);
    if (std::abs(root.imag()) < kOnAxis * size) {
      roots.singles.push_back(size);
    } else if (std::abs(root.real()) < kOnAxis * size) {
      roots.pairs.emplace_back(kJustOffAxis * size, size);
    } else if (root.imag() > 0) {
      roots.pairs.push_back(root);
    }
  }
  return roots;
}

AllottedRoots AllotRoots(AllottedRoots roots, int singles, int pairs) {
  const Root kMissingPair(.8, 1.2);
  const auto singlesOver = [&] { return static_cast<int>(std::ssize(roots.singles)) - singles; };
  const auto pairsOver = [&] { return static_cast<int>(std::ssize(roots.pairs)) - pairs; };
  while (singlesOver() >= 2 && pairsOver() < 0) JoinSingles(roots);
  while (singlesOver() < 0 && pairsOver() > 0) SplitFarthestPair(roots, -singlesOver());
  std::sort(roots.singles.begin(), roots.singles.end());
  while (singlesOver() < 0) {
    roots.singles.push_back(roots.singles.empty() ? .5 : 1.5 * roots.singles.back());
  }
  while (pairsOver() < 0) roots.pairs.push_back(kMissingPair);
  roots.singles.resize(static_cast<std::size_t>(singles));
  while (pairsOver() > 0) roots.pairs.erase(Farthest(roots.pairs));
  return roots;
}

AllottedZeros AllotZeros(const Eigen::VectorXcd& x, const ZeroCounts& counts) {
  std::vector<Root> rest(x.begin(), x.end());
  AllottedZeros zeros;
  const auto argument = [](const Root& root) { return std::abs(std::arg(root)); };
  const auto omegaRoots = 2 * static_cast<std::size_t>(counts.omega);
  zeros.omega = OmegaZeros(TakeFirst(rest, omegaRoots, argument), counts.omega);
  const auto sigmaRoots = static_cast<std::size_t>(counts.sigma);
  const std::vector<Root> sigma =
      TakeFirst(rest, sigmaRoots, [&argument](const Root& root) { return -argument(root); });
  for (const Root& root : sigma) {
    zeros.sigma += std::sqrt(std::abs(root)) / static_cast<double>(sigma.size());
  }
  if (sigma.empty()) zeros.sigma = .5;
  const Eigen::VectorXcd left =
      Eigen::VectorXcd::Map(rest.data(), static_cast<Eigen::Index>(rest.size()));
  zeros.pairs = AllotRoots(RootsInS(left), 0, counts.pairs + 2 * counts.quads).pairs;
  for (int i = 0; i < counts.quads; ++i) zeros.quads.push_back(TakeQuad(zeros.pairs));
  return zeros;
}

}  // namespace polefit

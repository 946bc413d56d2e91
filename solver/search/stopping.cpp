#include "solver/search/stopping.h"

#include <algorithm>
#include <cmath>

namespace polefit {

namespace {

/// Two costs within this share are one optimum.
constexpr double kSameCost = 1e-3;
/// The search ends when fewer starts than this may lead to optima not seen ...
constexpr double kUnseenShare = 0.05;
/// ... and so many, of any kind, have reached the lowest F.
constexpr int kWantedStarts = 4;

/// With W optima in N independent local searches the expected share of searches that would lead to
/// others is W (W + 1) / (N (N - 1)) (C. Boender and A. Rinnooy Kan, Math. Programming 37 (1987)
/// 59).
double UnseenShare(int optima, int witnesses) {
  if (witnesses < 2) return 1;
  return std::min(1.0, optima * (optima + 1.0) / (witnesses * (witnesses - 1.0)));
}

/// A start that tells where starts end: it converged and owes nothing to the others.
bool IsWitness(const StartSummary& start) {
  const bool isIndependent = start.kind != StartKind::perturbed && start.kind != StartKind::parted;
  return isIndependent && start.HasConverged();
}

}  // namespace

bool IsSameCost(double one, double other, double negligible) {
  return std::abs(one - other) <= std::max(kSameCost * std::min(one, other), negligible);
}

void CountOptima(Summary& summary) {
  std::vector<const StartSummary*> starts;
  for (const StartSummary& start : summary.starts) {
    if (start.best.isFinite) starts.push_back(&start);
  }
  std::stable_sort(starts.begin(), starts.end(), [](const auto* one, const auto* other) {
    return one->best.Cost() < other->best.Cost();
  });
  summary.optima.clear();
  summary.witnesses = summary.agreeing = 0;
  int seen = 0;
  for (const StartSummary* const start : starts) {
    const double cost = start->best.Cost();
    std::vector<Optimum>& optima = summary.optima;
    if (optima.empty() || !IsSameCost(optima.back().cost, cost, summary.negligible)) {
      optima.push_back({cost});
    }
    Optimum& optimum = optima.back();
    ++optimum.starts;
    optimum.isConverged = optimum.isConverged || start->HasConverged();
    if (!IsWitness(*start)) continue;
    if (++optimum.witnesses == 1) ++seen;
    ++summary.witnesses;
    if (IsSameCost(summary.best.Cost(), cost, summary.negligible)) ++summary.agreeing;
  }
  summary.unseenShare = UnseenShare(seen, summary.witnesses);
}

bool HasSeenEnough(const Summary& summary) {
  if (summary.optima.empty()) return false;
  const Optimum& lowest = summary.optima.front();
  if (lowest.cost <= summary.negligible) return true;
  return summary.unseenShare < kUnseenShare && lowest.starts >= kWantedStarts;
}

}  // namespace polefit

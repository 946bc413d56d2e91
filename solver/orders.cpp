#include "solver/orders.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "base/text_format.h"
#include "solver/problem/answers.h"
#include "solver/problem/problem_reader.h"
#include "solver/report/figures.h"
#include "solver/report/last_run.h"
#include "solver/search/data_start.h"
#include "solver/search/endings.h"
#include "solver/search/orca.h"

namespace polefit {

namespace {

/// The record with so many poles, none of them typed.
ResponseRecord WithPoles(ResponseRecord record, int singles, int pairs) {
  record.Slot(slot::kNPoles) = std::to_string(singles) + " " + std::to_string(pairs);
  for (const int list : {slot::kSigmaPoles, slot::kPoleReal, slot::kPoleImag}) {
    record.Slot(list).clear();
  }
  return record;
}

double RoundingWithout(Problem problem, const Iterate& iterate, bool delay) {
  if (delay) {
    problem.txUnit = 0;
  } else {
    problem.yinUnit = problem.youtUnit = 0;
  }
  return RoundingCost(problem, iterate);
}

/// m ln F' for each kind of rows and a penalty for k fitted numbers (C. M. Hurvich and C.-L. Tsai,
/// Biometrika 76 (1989) 297); a fit finer than the points are typed counts no more than one as
/// fine.
std::optional<double> CriterionOf(const Problem& problem, const Iterate& iterate,
                                  const Trust& trust) {
  constexpr double kNegligible = 1e-20;
  const bool isConstantFree = problem.wantsDelay && problem.rows.wantedDelay == 0;
  const double k = trust.freeNumbers + 1 + (isConstantFree ? 1 : 0) + (problem.wantsDelay ? 2 : 1);
  const int rows = trust.freedom + trust.freeNumbers + 1 + (isConstantFree ? 1 : 0);
  if (rows <= k + 1) return std::nullopt;
  const auto logarithm = [](double square, double rounding) {
    return std::log(std::max({square, rounding, kNegligible}));
  };
  const auto delayRows =
      static_cast<double>(problem.wantsDelay ? (problem.rows.delayLevels != 0).count() : 0);
  double criterion = (rows - delayRows) *
                     logarithm(iterate.fit.meanSquare, RoundingWithout(problem, iterate, true) /
                                                           problem.rows.magnitudeWeight);
  if (problem.wantsDelay) {
    criterion += delayRows *
                 logarithm(iterate.fit.delayMeanSquare, RoundingWithout(problem, iterate, false));
  }
  return criterion + 2 * k + 2 * k * (k + 1) / (rows - k - 1);
}

std::array<std::string, 4> FoundPoles(const ResponseRecord& record, const Problem& problem,
                                      const Iterate& best) {
  ResponseRecord answers;
  answers.slots = record.slots;
  answers = LastRunRecord(WithPoles(answers, problem.poleCounts[0], problem.poleCounts[1]), problem,
                          best);
  return {answers.Slot(slot::kNPoles), answers.Slot(slot::kSigmaPoles),
          answers.Slot(slot::kPoleReal), answers.Slot(slot::kPoleImag)};
}

Iterate RunFrom(const Problem& problem, const Eigen::VectorXd& start,
                const std::function<bool()>& isStopRequested) {
  Listener nobody;
  Evaluator evaluator(problem, nobody, isStopRequested);
  return Orca(problem, evaluator, nobody)
      .Run(StartKind::data, start, problem.options.maxSteps)
      .best;
}

/// A full run of the start that the points give, and where locations are typed one with these.
std::optional<OrderFit> FitPoles(const ResponseRecord& record, int singles, int pairs,
                                 const std::function<bool()>& isStopRequested,
                                 std::vector<Finding>& findings) {
  findings.clear();
  Problem problem = ReadProblem(WithPoles(record, singles, pairs), findings);
  if (HasFault(findings)) return std::nullopt;
  FillFromPoints(problem, findings);
  Iterate best = RunFrom(problem, problem.typedParameters, isStopRequested);
  const auto start = problem.startsFromPoints ? std::nullopt : FindDataStart(problem);
  if (start && start->parameters != problem.typedParameters) {
    const Iterate other = RunFrom(problem, start->parameters, isStopRequested);
    if (other.Cost() < best.Cost()) best = other;
  }
  if (!best.isFinite) return std::nullopt;
  const PassbandFigures passband = JudgePassband(problem, best);
  const Trust trust = JudgeTrust(problem, best, LocationsOf(problem, best), 0);
  const double decibels = passband.largestDecibels.row > 0
                              ? passband.largestDecibels.size
                              : std::numeric_limits<double>::quiet_NaN();
  return OrderFit{singles + 2 * pairs,
                  singles,
                  pairs,
                  best.Cost(),
                  std::sqrt(best.fit.meanSquare),
                  decibels,
                  CriterionOf(problem, best, trust),
                  FoundPoles(record, problem, best)};
}

/// The best split of so many poles: as many pairs as there can be, then with two, four and more
/// single poles for as long as that helps.
std::optional<OrderFit> FitOrder(const ResponseRecord& record, int poles,
                                 const std::function<bool()>& isStopRequested,
                                 std::vector<Finding>& findings) {
  constexpr int kAlwaysTried = 2;
  std::optional<OrderFit> best;
  for (int singles = poles % 2; singles <= std::min(poles, kMostOfAKind); singles += 2) {
    const auto fit = FitPoles(record, singles, (poles - singles) / 2, isStopRequested, findings);
    const bool isBetter = fit && (!best || fit->cost < best->cost);
    if (isBetter) best = fit;
    if (!isBetter && singles >= kAlwaysTried) break;
  }
  return best;
}

}  // namespace

OrderTable TryOrders(const ResponseRecord& record, int fewest, int most,
                     const std::function<bool()>& isStopRequested,
                     const std::function<void(const OrderFit&)>& found) {
  OrderTable table;
  for (int poles = fewest; poles <= most && !isStopRequested(); ++poles) {
    std::vector<Finding> findings;
    const auto fit = FitOrder(record, poles, isStopRequested, findings);
    if (fit) table.fits.push_back(*fit);
    if (fit && found) found(*fit);
    if (!fit) table.findings = findings;
  }
  for (std::size_t i = 0; i < table.fits.size(); ++i) {
    const auto& criterion = table.fits[i].criterion;
    if (criterion && (!table.best || *criterion < *table.fits[*table.best].criterion)) {
      table.best = i;
    }
  }
  if (table.best && *table.best + 1 == table.fits.size()) table.best.reset();
  return table;
}

std::string OrdersAsText(const OrderTable& table) {
  std::string text = "poles  question 6             F        rms  largest dB        AICc\n";
  for (std::size_t i = 0; i < table.fits.size(); ++i) {
    const OrderFit& fit = table.fits[i];
    text += Format("%5d  %10s  %12.6e  %9.3e  %10s  %10s%s\n", fit.poles,
                   Format("%d %d", fit.singles, fit.pairs).c_str(), fit.cost, fit.rms,
                   std::isnan(fit.decibels) ? "-" : Format("%.4g", fit.decibels).c_str(),
                   fit.criterion ? Format("%.1f", *fit.criterion).c_str() : "-",
                   table.best == i ? "  stands out" : "");
  }
  return text + (table.best ? "" : "none stands out\n");
}

std::string OrdersAsJson(const OrderTable& table) {
  nlohmann::ordered_json object;
  object["orders"] = nlohmann::ordered_json::array();
  for (const OrderFit& fit : table.fits) {
    object["orders"].push_back(
        {{"poles", fit.poles},
         {"sigma", fit.singles},
         {"pairs", fit.pairs},
         {"F", fit.cost},
         {"rms", fit.rms},
         {"maxdb", fit.decibels},
         {"aicc", fit.criterion.value_or(std::numeric_limits<double>::quiet_NaN())}});
  }
  object["best"] = nullptr;
  if (table.best) object["best"] = table.fits[*table.best].poles;
  return object.dump(1) + "\n";
}

}  // namespace polefit

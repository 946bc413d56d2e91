#include "plots/start_values.h"

#include <algorithm>
#include <vector>

#include "plots/move_location.h"
#include "record/question_catalogue.h"
#include "solver/problem/answers.h"
#include "solver/problem/problem_reader.h"
#include "solver/report/last_run.h"
#include "solver/search/data_start.h"

namespace polefit {

namespace {

/// Lists that belong together, and how many values each of them needs.
struct ListGroup {
  std::vector<int> slots;
  std::size_t count;
};

std::vector<ListGroup> GroupsOf(const ResponseRecord& record) {
  const auto count = [&record](int slot, std::size_t word) {
    return static_cast<std::size_t>(CountAt(record, slot, word));
  };
  return {{{slot::kSigmaPoles}, count(slot::kNPoles, 0)},
          {{slot::kPoleReal, slot::kPoleImag}, count(slot::kNPoles, 1)},
          {{slot::kSigmaZero}, IsYes(record.Slot(slot::kSigmaZeroWanted)) ? 1U : 0U},
          {{slot::kYzero}, count(slot::kZeroCounts, kOmegaAxisZeros)},
          {{slot::kZreal, slot::kZimag},
           count(slot::kZeroCounts, kZeroPairs) + count(slot::kZeroCounts, kZeroQuads)}};
}

/// On the bound 1 they would be held in the runs that follow.
void KeepOmegaZerosFree(Problem& problem) {
  const double least = std::min(kLeastFreeZero, problem.largest);
  for (const Factor& factor : problem.constellation.factors) {
    const bool isMoved = factor.parameter < problem.constellation.MovedCount();
    if (factor.kind != FactorKind::omegaZero || !isMoved) continue;
    double& zero = problem.typedParameters[factor.parameter];
    zero = std::max(zero, least);
  }
}

}  // namespace

SuggestedStart SuggestStart(const ResponseRecord& record, bool replacesTyped) {
  using Outcome = SuggestedStart::Outcome;
  ResponseRecord emptied = record;
  std::vector<int> wanted;
  const std::vector<ListGroup> groups = GroupsOf(record);
  for (const ListGroup& group : groups) {
    bool isFilled = !replacesTyped;
    for (const int slot : group.slots) {
      isFilled = isFilled && Words(record.Slot(slot)).size() == group.count;
    }
    if (group.count == 0 || isFilled) continue;
    for (const int slot : group.slots) {
      emptied.Slot(slot).clear();
      wanted.push_back(slot);
    }
  }
  const bool hasLists = std::any_of(groups.begin(), groups.end(),
                                    [](const ListGroup& group) { return group.count > 0; });
  if (wanted.empty()) return {hasLists ? Outcome::allTyped : Outcome::faulty, {}};
  std::vector<Finding> findings;
  Problem problem = ReadProblem(emptied, findings);
  if (HasFault(findings)) return {Outcome::faulty, {}};
  FillFromPoints(problem, findings);
  KeepOmegaZerosFree(problem);
  Iterate start;
  start.parameters = problem.typedParameters;
  start.fit.gain = problem.typedGain;
  const ResponseRecord filled = LastRunRecord(emptied, problem, start);
  SuggestedStart suggested = {Outcome::found, record};
  for (const int slot : wanted) suggested.record.Slot(slot) = filled.Slot(slot);
  return suggested;
}

}  // namespace polefit

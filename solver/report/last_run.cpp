#include "solver/report/last_run.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/text_format.h"
#include "solver/problem/answers.h"

namespace polefit {

namespace {

/// Writes locations of the best point as answers.
class LocationWriter {
 public:
  LocationWriter(ResponseRecord& record, const Problem& problem, const Iterate& iterate)
      : record_(record), problem_(problem), iterate_(iterate) {}

  void WriteAll() {
    Write(slot::kSigmaPoles, {FactorKind::sigmaPole}, 0);
    Write(slot::kPoleReal, {FactorKind::polePair}, 0);
    Write(slot::kPoleImag, {FactorKind::polePair}, 1);
    Write(slot::kSigmaZero, {FactorKind::sigmaZero}, 0);
    Write(slot::kYzero, {FactorKind::omegaZero}, 0);
    Write(slot::kZreal, {FactorKind::zeroPair, FactorKind::zeroQuad}, 0);
    Write(slot::kZimag, {FactorKind::zeroPair, FactorKind::zeroQuad}, 1);
  }

 private:
  /// Fills one answer with part 0 (real) or 1 (imaginary) of all locations of these kinds. An
  /// answer that is not in use stays as it is.
  void Write(int slot, const std::vector<FactorKind>& kinds, int part) {
    std::string text;
    for (const FactorKind kind : kinds) {
      for (const std::size_t index : SortedFactors(problem_, iterate_, kind)) {
        if (!text.empty()) text += ' ';
        if (part == 0 && problem_.isRightHalf[index]) text += '-';
        text += ValueText(problem_.constellation.factors[index].parameter + part);
      }
    }
    if (!text.empty()) record_.Slot(slot) = text;
  }

  /// Rounding must not carry a value over its bound.
  std::string ValueText(int parameter) const {
    const double value = iterate_.parameters[parameter];
    std::string text = PlainNumber(value);
    if (parameter >= problem_.constellation.orcaCount) return text;
    const double rounded = ParseNumber(text).value_or(value);
    if (rounded <= problem_.lower[parameter]) return ExactNumber(problem_.lower[parameter]);
    if (rounded >= problem_.upper[parameter]) return ExactNumber(problem_.upper[parameter]);
    return text;
  }

  ResponseRecord& record_;
  const Problem& problem_;
  const Iterate& iterate_;
};

}  // namespace

std::vector<std::size_t> SortedFactors(const Problem& problem, const Iterate& iterate,
                                       FactorKind kind) {
  const std::vector<Factor>& factors = problem.constellation.factors;
  std::vector<std::size_t> indexes;
  for (std::size_t i = 0; i < factors.size(); ++i) {
    if (factors[i].kind == kind) indexes.push_back(i);
  }
  const auto key = [&](std::size_t index) {
    const Factor& factor = factors[index];
    return iterate.parameters[factor.parameter + (factor.IsPair() ? 1 : 0)];
  };
  std::stable_sort(indexes.begin(), indexes.end(),
                   [&](std::size_t one, std::size_t other) { return key(one) < key(other); });
  return indexes;
}

ResponseRecord LastRunRecord(const ResponseRecord& record, const Problem& problem,
                             const Iterate& iterate) {
  ResponseRecord last = record;
  LocationWriter(last, problem, iterate).WriteAll();
  last.Slot(slot::kGain) = PlainNumber(iterate.fit.gain);
  return last;
}

}  // namespace polefit

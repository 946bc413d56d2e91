#include "plots/change_structure.h"

#include <algorithm>
#include <cmath>

#include "record/question_catalogue.h"
#include "solver/problem/answers.h"

namespace polefit {

namespace {

/// The answer that counts a kind of location, and which of its numbers.
struct CountPlace {
  int slot = 0;
  std::size_t word = 0;
};

CountPlace PlaceOf(FactorKind kind) {
  switch (kind) {
    case FactorKind::sigmaPole:
      return {slot::kNPoles, 0};
    case FactorKind::polePair:
      return {slot::kNPoles, 1};
    case FactorKind::omegaZero:
      return {slot::kZeroCounts, kOmegaAxisZeros};
    case FactorKind::zeroPair:
      return {slot::kZeroCounts, kZeroPairs};
    default:
      return {slot::kZeroCounts, kZeroQuads};
  }
}

int CountOf(const ResponseRecord& record, FactorKind kind) {
  const CountPlace place = PlaceOf(kind);
  return CountAt(record, place.slot, place.word);
}

void AddToCount(ResponseRecord& record, FactorKind kind, int more) {
  const CountPlace place = PlaceOf(kind);
  std::vector<std::string> words = Words(record.Slot(place.slot));
  words.resize(std::max(words.size(), place.word + 1), "0");
  words[place.word] = std::to_string(CountOf(record, kind) + more);
  record.Slot(place.slot) = Joined(words);
}

/// The list with a number more. The zero quads stand behind the zero pairs; a list that is not in
/// use may hold anything.
std::string WithNumber(const ResponseRecord& record, FactorKind kind, int list, double value) {
  const bool isPair = kind == FactorKind::zeroPair;
  const bool isQuad = kind == FactorKind::zeroQuad;
  const int own = CountOf(record, kind);
  const int before = isQuad ? CountOf(record, FactorKind::zeroPair) : 0;
  const int behind = isPair ? CountOf(record, FactorKind::zeroQuad) : 0;
  std::vector<std::string> words = Words(record.Slot(list));
  words.resize(std::min(words.size(), static_cast<std::size_t>(before + own + behind)));
  const std::size_t at = std::min(words.size(), static_cast<std::size_t>(before + own));
  words.insert(words.begin() + static_cast<std::ptrdiff_t>(at), TypedNumber(value));
  return Joined(words);
}

/// The numbers of a location as its lists have them.
std::vector<double> TypedParts(const ResponseRecord& record, FactorKind kind, double real,
                               double imaginary) {
  const double lowest = ParseNumber(record.Slot(slot::kLowestXY)).value_or(0);
  const double largest = std::max(lowest, ParseNumber(record.Slot(slot::kMaxXY)).value_or(0));
  if (kind == FactorKind::omegaZero) {
    return {std::clamp(imaginary, std::min(kLeastFreeZero, largest), largest)};
  }
  const double size = std::clamp(std::abs(real), lowest, largest);
  const bool isRight = real > 0 && (kind == FactorKind::zeroPair || kind == FactorKind::sigmaZero);
  std::vector<double> parts = {isRight ? -size : size};
  if (SlotsOf(kind).size() > 1) parts.push_back(std::clamp(imaginary, 0.0, largest));
  return parts;
}

/// The answers that differ, or nothing where the changed ones have a fault.
std::optional<std::vector<ChangedAnswer>> Changes(const ResponseRecord& from,
                                                  const ResponseRecord& to) {
  std::vector<Finding> findings;
  ReadSharedConstellation(to, findings);
  if (HasFault(findings)) return std::nullopt;
  std::vector<ChangedAnswer> answers;
  for (int slot = slot::kNPoles; slot <= slot::kZimag; ++slot) {
    if (from.Slot(slot) != to.Slot(slot)) answers.push_back({slot, to.Slot(slot)});
  }
  return answers;
}

}  // namespace

std::optional<std::vector<ChangedAnswer>> AddLocation(const ResponseRecord& record, FactorKind kind,
                                                      double real, double imaginary) {
  ResponseRecord changed = record;
  const std::vector<int> lists = SlotsOf(kind);
  const std::vector<double> parts = TypedParts(record, kind, real, imaginary);
  if (kind == FactorKind::sigmaZero) {
    if (IsYes(record.Slot(slot::kSigmaZeroWanted))) return std::nullopt;
    changed.Slot(slot::kSigmaZeroWanted) = "Y";
    changed.Slot(slot::kSigmaZero) = TypedNumber(parts[0]);
    return Changes(record, changed);
  }
  for (std::size_t i = 0; i < lists.size(); ++i) {
    changed.Slot(lists[i]) = WithNumber(record, kind, lists[i], parts[i]);
  }
  AddToCount(changed, kind, 1);
  return Changes(record, changed);
}

std::optional<std::vector<ChangedAnswer>> RemoveLocation(const ResponseRecord& record,
                                                         const FitCurves& typed,
                                                         std::size_t location) {
  ResponseRecord changed = record;
  const FactorKind kind = typed.locations.at(location).kind;
  if (kind == FactorKind::sigmaZero) {
    changed.Slot(slot::kSigmaZeroWanted) = "N";
    return Changes(record, changed);
  }
  for (const int list : SlotsOf(kind)) {
    std::vector<std::string> words = Words(record.Slot(list));
    const std::size_t word = typed.words.at(location);
    if (word < words.size()) words.erase(words.begin() + static_cast<std::ptrdiff_t>(word));
    changed.Slot(list) = Joined(words);
  }
  AddToCount(changed, kind, -1);
  return Changes(record, changed);
}

ResponseRecord WithAnswers(ResponseRecord record, const std::vector<ChangedAnswer>& answers) {
  for (const ChangedAnswer& answer : answers) record.Slot(answer.slot) = answer.text;
  return record;
}

}  // namespace polefit

#include "plots/move_location.h"

#include <algorithm>
#include <cmath>

#include "base/text_format.h"
#include "plots/diagram_parts.h"
#include "solver/problem/answers.h"

namespace polefit {

namespace {

/// The answer with one of its words replaced.
ChangedAnswer WithWord(const ResponseRecord& record, int slot, std::size_t word, double value) {
  std::vector<std::string> words = Words(record.Slot(slot));
  if (word >= words.size()) return {};
  words[word] = TypedNumber(value);
  return {slot, Joined(words)};
}

/// The size of a real part, which does not leave its side of the omega axis.
double SizeOnSide(double typedReal, double real, double low, double high) {
  return std::clamp(typedReal < 0 ? -real : real, low, high);
}

bool IsTypedNegative(const ResponseRecord& record, int slot, std::size_t word) {
  const std::vector<std::string> words = Words(record.Slot(slot));
  return word < words.size() && words[word].starts_with('-');
}

}  // namespace

std::string TypedNumber(double value) {
  return PlainNumber(Rounded4(value));
}

ResponseRecord WithDrawnLists(const ResponseRecord& record, const FitCurves& typed) {
  ResponseRecord drawn = record;
  for (const Location& at : typed.locations) {
    const std::vector<int> slots = SlotsOf(at.kind);
    for (std::size_t part = 0; part < slots.size(); ++part) {
      if (!Words(record.Slot(slots[part])).empty()) continue;
      const bool isReal = part == 0 && at.kind != FactorKind::omegaZero;
      std::string& list = drawn.Slot(slots[part]);
      list += (list.empty() ? "" : " ") + TypedNumber(isReal ? std::abs(at.real) : at.imaginary);
    }
  }
  return drawn;
}

std::vector<ChangedAnswer> MoveLocation(const ResponseRecord& typedRecord, const FitCurves& typed,
                                        std::size_t location, double real, double imaginary) {
  const ResponseRecord record = WithDrawnLists(typedRecord, typed);
  const Location& at = typed.locations[location];
  if (at.isHeld) return {};
  const double largest = typed.h->LargestLocation();
  const std::vector<int> slots = SlotsOf(at.kind);
  const std::size_t word = typed.words[location];
  std::vector<ChangedAnswer> answers;
  if (at.kind == FactorKind::omegaZero) {
    const double least = std::min(kLeastFreeZero, largest);
    answers.push_back(
        WithWord(record, slots[0], word, std::clamp(imaginary, least, std::max(least, largest))));
  } else {
    const double size = SizeOnSide(at.real, real, typed.h->LowestLocation(), largest);
    const double sign = IsTypedNegative(record, slots[0], word) ? -1 : 1;
    answers.push_back(WithWord(record, slots[0], word, sign * size));
  }
  if (slots.size() > 1) {
    answers.push_back(WithWord(record, slots[1], word, std::clamp(imaginary, 0.0, largest)));
  }
  std::erase_if(answers, [](const ChangedAnswer& answer) { return answer.slot == 0; });
  return answers;
}

}  // namespace polefit

#include "solver/problem/location_reader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <span>
#include <utility>

#include "record/question_catalogue.h"

namespace polefit {

namespace {

/// One location as typed and as the solvers take it.
struct TypedLocation {
  double value = 0;
  std::string text;  ///< empty where none is typed

  bool IsTyped() const { return !text.empty(); }
};

std::string NumberText(int slot) {
  return std::string(QuestionNumber(slot));
}

enum class Mover { orca, lynx, nobody };

// Where a search begins that has neither typed values nor points that tell: damped poles spread
// over the band, zeros beyond it.

double RoughReal(int index) {
  constexpr std::array<double, 10> kReals = {.5, .5, .4, .3, .25, .2, .18, .15, .12, .1};
  return kReals[std::min(static_cast<std::size_t>(index), kReals.size() - 1)];
}

double RoughImaginary(int index, int count) {
  return count == 1 ? .5 : .15 + .85 * index / (count - 1);
}

double RoughOmegaZero(int index, int count, double largest) {
  const auto spaced = [](int at) { return 1.1 * std::pow(1.3, at); };
  return spaced(count - 1) < largest ? spaced(index)
                                     : std::pow(largest, (index + 1.0) / (count + 1.0));
}

/// Questions 6 to 11c and the bounds. The factors are gathered in the order of the questions; their
/// places in the parameters are given at the end, when all are known.
class LocationReader {
 public:
  LocationReader(const ResponseRecord& record, AnswerReader& answers, Problem& problem)
      : record_(record), answers_(answers), problem_(problem) {}

  void Read() {
    ReadBounds();
    // A list counts 0 values, and is not looked at, when its counts have a fault.
    const bool hasPoles = ReadCounts(slot::kNPoles, problem_.poleCounts);
    const bool hasZeros = ReadCounts(slot::kZeroCounts, problem_.zeroCounts);
    if (hasPoles) ReadPoles();
    ReadSigmaZero();
    ReadOmegaZeros();
    ReadPairedZeros();
    if (hasPoles && hasZeros) CheckOrder();
    PlaceParameters();
  }

 private:
  const std::string& Text(int slot) const { return record_.Slot(slot); }

  /// Locations are judged only against bounds that make sense themselves.
  void ReadBounds() {
    const auto lowest = answers_.Number(record_, slot::kLowestXY);
    const auto largest = answers_.Number(record_, slot::kMaxXY);
    const bool hasLowest = lowest && *lowest > 0;
    if (lowest && !hasLowest) {
      answers_.Fault(QuestionTopic(slot::kLowestXY),
                     ": " + Text(slot::kLowestXY) + " must be greater than 0.");
    }
    if (!largest) return;
    problem_.lowest = hasLowest ? *lowest : 0;
    problem_.largest = *largest;
    hasLargest_ = *largest > problem_.lowest;
    hasBounds_ = hasLargest_ && hasLowest;
    if (!hasLargest_) {
      answers_.Fault(QuestionTopic(slot::kMaxXY),
                     ": " + Text(slot::kMaxXY) + " must be greater than the answer to question " +
                         NumberText(slot::kLowestXY) + ".");
    }
  }

  bool ReadCounts(int slot, std::span<int> counts) {
    return answers_.Counts(QuestionTopic(slot), Text(slot), counts);
  }

  bool IsEmpty(int slot) const { return Words(Text(slot)).empty(); }

  /// The typed locations, or rough ones where the whole list is empty.
  std::vector<TypedLocation> StartList(int slot, int count, int countSlot,
                                       const std::function<double(int)>& roughAt) {
    if (!IsEmpty(slot)) return List(slot, count, countSlot);
    std::vector<TypedLocation> list;
    list.reserve(static_cast<std::size_t>(std::max(count, 0)));
    for (int i = 0; i < count; ++i) list.push_back({roughAt(i), {}});
    return list;
  }

  /// Real and imaginary parts are typed together or not at all.
  std::pair<std::vector<TypedLocation>, std::vector<TypedLocation>> PairLists(
      int realSlot, int imaginarySlot, int count, int countSlot,
      const std::function<double(int)>& roughReal,
      const std::function<double(int)>& roughImaginary) {
    if (!IsEmpty(realSlot) || !IsEmpty(imaginarySlot)) {
      return {List(realSlot, count, countSlot), List(imaginarySlot, count, countSlot)};
    }
    return {StartList(realSlot, count, countSlot, roughReal),
            StartList(imaginarySlot, count, countSlot, roughImaginary)};
  }

  std::vector<TypedLocation> List(int slot, int count, int countSlot) {
    const std::vector<double> values = answers_.Numbers(QuestionTopic(slot), Text(slot), count,
                                                        "question " + NumberText(countSlot));
    const std::vector<std::string> words = Words(Text(slot));
    std::vector<TypedLocation> list;
    for (std::size_t i = 0; i < values.size(); ++i) list.push_back({values[i], words[i]});
    return list;
  }

  void ReadPoles() {
    if (problem_.poleCounts[0] + problem_.poleCounts[1] == 0) {
      answers_.Fault(QuestionTopic(slot::kNPoles), ": H(s) needs at least one pole.");
    }
    if (problem_.poleCounts[0] > 0) {
      for (const TypedLocation& pole :
           StartList(slot::kSigmaPoles, problem_.poleCounts[0], slot::kNPoles,
                     [](int i) { return .5 * std::pow(1.55, i); })) {
        AddFactor({FactorKind::sigmaPole, 0, -1, 1}, {Magnitude(slot::kSigmaPoles, pole)},
                  pole.IsTyped());
      }
    }
    if (problem_.poleCounts[1] > 0) ReadPolePairs();
  }

  void ReadPolePairs() {
    const int count = problem_.poleCounts[1];
    const auto [real, imaginary] =
        PairLists(slot::kPoleReal, slot::kPoleImag, count, slot::kNPoles, RoughReal,
                  [count](int i) { return RoughImaginary(i, count); });
    for (std::size_t i = 0; i < std::min(real.size(), imaginary.size()); ++i) {
      AddFactor({FactorKind::polePair, 0, -1, 1},
                {Magnitude(slot::kPoleReal, real[i]), Imaginary(slot::kPoleImag, imaginary[i])},
                real[i].IsTyped());
    }
  }

  /// Poles lie left of the omega axis whatever sign is typed.
  double Magnitude(int slot, const TypedLocation& location) {
    const double magnitude = std::abs(location.value);
    if (location.value < 0) {
      answers_.Warn(ShortQuestionTopic(slot), ": " + location.text + " is taken as its magnitude.");
    }
    CheckStart(slot, location, magnitude, problem_.lowest, Text(slot::kLowestXY));
    return magnitude;
  }

  double Imaginary(int slot, const TypedLocation& location) {
    const double magnitude = std::abs(location.value);
    CheckStart(slot, location, magnitude, 0, "0");
    return magnitude;
  }

  /// ORCA begins inside the bounds.
  void CheckStart(int slot, const TypedLocation& location, double magnitude, double lowest,
                  const std::string& lowestText) {
    const bool hasRoom = hasBounds_ && lowest < problem_.largest;
    if (!location.IsTyped() || !hasRoom || (magnitude > lowest && magnitude < problem_.largest)) {
      return;
    }
    const Topic topic = ShortQuestionTopic(slot);
    const std::string begin = ": " + location.text;
    const bool isOn = magnitude == lowest || magnitude == problem_.largest;
    if (isOn) {
      answers_.Warn(topic, begin + " lies on a bound and starts just inside it.");
    } else {
      answers_.Warn(topic, begin + " lies outside " + lowestText + " to " + Text(slot::kMaxXY) +
                               " and starts at the nearest bound.");
    }
  }

  /// A doublet has its zeros on both sides and a lossless zero must not have its pole on the right,
  /// so that only a plain zero keeps the typed side.
  void ReadSigmaZero() {
    if (!IsYes(Text(slot::kSigmaZeroWanted))) return;
    const bool isDoublet = IsYes(Text(slot::kDoublet));
    const bool isLossless = IsYes(Text(slot::kLossless));
    problem_.sigmaZeros = isDoublet ? 2 : 1;
    problem_.losslessPoles = isLossless ? problem_.sigmaZeros : 0;
    const Topic topic = QuestionTopic(slot::kSigmaZero);
    const bool isTyped = !IsEmpty(slot::kSigmaZero);
    const auto zero = isTyped ? answers_.Number(topic, Text(slot::kSigmaZero)) : .5;
    if (!zero) return;
    if (*zero == 0) {
      answers_.Fault(topic, ": " + Text(slot::kSigmaZero) + " must be other than 0.");
      return;
    }
    const bool keepsSide = !isDoublet && !isLossless;
    const bool isRightHalf = keepsSide && *zero < 0;
    const TypedLocation location = {keepsSide ? std::abs(*zero) : *zero,
                                    isTyped ? Text(slot::kSigmaZero) : std::string()};
    const int logCount = isLossless ? 0 : isDoublet ? 2 : 1;
    const int plainDelay = isRightHalf ? 1 : -1;
    const int delayCount = isLossless ? (isDoublet ? 4 : 2) : isDoublet ? 0 : plainDelay;
    AddFactor({FactorKind::sigmaZero, 0, logCount, delayCount},
              {Magnitude(slot::kSigmaZero, location)}, isTyped, isRightHalf);
  }

  /// Sorted, since LYNX needs its zeros in order and the first one to be the first null.
  void ReadOmegaZeros() {
    const int count = problem_.zeroCounts[0];
    if (count == 0) return;
    const bool equalises = count >= 2 && !MayHaveRowsBeyondBand();
    if (equalises && hasLargest_ && problem_.largest <= 1) {
      answers_.Fault(QuestionTopic(slot::kMaxXY),
                     ": " + Text(slot::kMaxXY) + " leaves no room for " + std::to_string(count) +
                         " omega-axis zeros with equal sidelobes; it must be greater than 1.");
    } else if (hasLargest_ && problem_.largest < 1 && IsEmpty(slot::kYzero)) {
      answers_.Fault(QuestionTopic(slot::kMaxXY),
                     ": " + Text(slot::kMaxXY) +
                         " leaves no room for omega-axis zeros; it must be 1 or greater.");
    }
    std::vector<TypedLocation> list = StartList(slot::kYzero, count, slot::kZeroCounts, [&](int i) {
      return RoughOmegaZero(i, count, problem_.largest);
    });
    std::stable_sort(list.begin(), list.end(),
                     [](const TypedLocation& one, const TypedLocation& other) {
                       return one.value < other.value;
                     });
    for (const TypedLocation& zero : list) {
      const bool isFirst = &zero == &list.front();
      const Mover mover = equalises && !isFirst ? Mover::lynx
                          : zero.value == 1     ? Mover::nobody
                                                : Mover::orca;
      if (zero.IsTyped()) CheckOmegaZero(zero, mover);
      AddFactor({FactorKind::omegaZero, 0, 1, 0}, {zero.value}, zero.IsTyped(), false, mover);
    }
  }

  void CheckOmegaZero(const TypedLocation& zero, Mover mover) {
    const Topic topic = QuestionTopic(slot::kYzero);
    if (zero.value < 1) {
      answers_.Fault(topic, ": " + zero.text + " is below 1.0.");
    } else if (hasLargest_ && zero.value > problem_.largest) {
      answers_.Fault(topic, ": " + zero.text + " is above the largest location " +
                                Text(slot::kMaxXY) + " (question " + NumberText(slot::kMaxXY) +
                                ").");
    } else if (mover != Mover::nobody) {
      CheckStart(slot::kYzero, zero, zero.value, 1, "1");
    }
  }

  /// Pairs, then quads. On the omega axis itself a pair would be two omega-axis zeros, whose
  /// magnitude is not smooth there.
  void ReadPairedZeros() {
    const int count = problem_.zeroCounts[1] + problem_.zeroCounts[2];
    if (count == 0) return;
    const auto [real, imaginary] = PairLists(
        slot::kZreal, slot::kZimag, count, slot::kZeroCounts, [](int) { return .3; },
        [](int i) { return 1 + .3 * i; });
    for (const TypedLocation& location : real) {
      if (location.value == 0) {
        answers_.Fault(QuestionTopic(slot::kZreal),
                       ": " + location.text + " is not allowed; use omega-axis zeros instead.");
      }
    }
    for (std::size_t i = 0; i < std::min(real.size(), imaginary.size()); ++i) {
      const bool isQuad = i >= static_cast<std::size_t>(problem_.zeroCounts[1]);
      const bool isRightHalf = !isQuad && real[i].value < 0;
      const double magnitude = std::abs(real[i].value);
      CheckStart(slot::kZreal, real[i], magnitude, problem_.lowest, Text(slot::kLowestXY));
      AddFactor({isQuad ? FactorKind::zeroQuad : FactorKind::zeroPair, 0, isQuad ? 2 : 1,
                 isQuad ? 0 : (isRightHalf ? 1 : -1)},
                {magnitude, Imaginary(slot::kZimag, imaginary[i])}, real[i].IsTyped(), isRightHalf);
    }
  }

  /// More zeros than poles would let |H| grow without end.
  void CheckOrder() {
    const int poles = problem_.PoleCount();
    const int zeros = problem_.ZeroCount();
    if (poles == problem_.losslessPoles || zeros <= poles) return;
    answers_.Fault(
        {ShortQuestionTopic(slot::kNPoles).place,
         "Questions " + NumberText(slot::kNPoles) + " and " + NumberText(slot::kZeroCounts)},
        ": H(s) has " + std::to_string(zeros) + " zeros but only " + std::to_string(poles) +
            (poles == 1 ? " pole" : " poles") + "; it needs at least as many poles as zeros.");
  }

  void AddFactor(const Factor& factor, std::vector<double> values, bool isTyped,
                 bool isRightHalf = false, Mover mover = Mover::orca) {
    problem_.constellation.factors.push_back(factor);
    problem_.isFromPoints.push_back(!isTyped);
    problem_.isRightHalf.push_back(isRightHalf);
    values_.push_back(std::move(values));
    movers_.push_back(mover);
  }

  /// Whether passband rows tell anything about the sidelobes. A frequency that is Freq Norm but for
  /// rounding is not beyond it; one with a fault may be.
  bool MayHaveRowsBeyondBand() const {
    return std::any_of(problem_.passband.begin(), problem_.passband.end(),
                       [this](const PassbandPoint& point) {
                         return !(point.frequency <= problem_.freqNorm * (1 + 1e-12));
                       });
  }

  /// Gives every location its place in the parameters: ORCA's, LYNX's, the held ones.
  void PlaceParameters() {
    Constellation& constellation = problem_.constellation;
    const std::pair<Mover, int*> counts[] = {{Mover::orca, &constellation.orcaCount},
                                             {Mover::lynx, &constellation.lynxCount},
                                             {Mover::nobody, &constellation.heldCount}};
    std::vector<double> parameters;
    for (const auto& [mover, count] : counts) {
      for (std::size_t i = 0; i < values_.size(); ++i) {
        if (movers_[i] != mover) continue;
        constellation.factors[i].parameter = static_cast<int>(parameters.size());
        parameters.insert(parameters.end(), values_[i].begin(), values_[i].end());
        *count += static_cast<int>(values_[i].size());
      }
    }
    problem_.typedParameters = Eigen::Map<Eigen::VectorXd>(
        parameters.data(), static_cast<Eigen::Index>(parameters.size()));
    PlaceBounds();
  }

  void PlaceBounds() {
    const int count = problem_.constellation.orcaCount;
    problem_.lower = Eigen::VectorXd::Constant(count, problem_.lowest);
    problem_.upper = Eigen::VectorXd::Constant(count, problem_.largest);
    for (const Factor& factor : problem_.constellation.factors) {
      if (factor.parameter >= count) continue;
      if (factor.kind == FactorKind::omegaZero) problem_.lower[factor.parameter] = 1;
      if (factor.IsPair()) problem_.lower[factor.parameter + 1] = 0;
    }
  }

  const ResponseRecord& record_;
  AnswerReader& answers_;
  Problem& problem_;
  bool hasLargest_ = false;
  bool hasBounds_ = false;
  /// An entry a factor.
  std::vector<std::vector<double>> values_;
  std::vector<Mover> movers_;
};

}  // namespace

void ReadLocations(const ResponseRecord& record, AnswerReader& answers, Problem& problem) {
  LocationReader(record, answers, problem).Read();
}

}  // namespace polefit

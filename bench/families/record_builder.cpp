#include "bench/families/record_builder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <random>
#include <string>

#include "base/text_format.h"
#include "bench/families/families.h"
#include "solver/problem/answers.h"

namespace polefit::families {

namespace {

std::string Digits(double value) {
  return Format("%.14g", value);
}

/// `count` values as one answer.
std::string List(int count, const std::function<double(int)>& valueAt) {
  std::string list;
  for (int i = 0; i < count; ++i) list += (i > 0 ? " " : "") + Format("%.6g", valueAt(i));
  return list;
}

double CrudeReal(int i) {
  constexpr std::array<double, 10> kReals = {.5, .5, .4, .3, .25, .2, .18, .15, .12, .1};
  return kReals[std::min<std::size_t>(static_cast<std::size_t>(i), kReals.size() - 1)];
}

void PutStarts(ResponseRecord& record, const Counts& counts) {
  const int pairs = counts.polePairs;
  const int zeroPairs = counts.leftPairs + counts.rightPairs;
  record.Slot(slot::kSigmaPoles) =
      List(counts.sigmaPoles, [](int i) { return .5 * std::pow(1.55, i); });
  record.Slot(slot::kPoleReal) = List(pairs, CrudeReal);
  record.Slot(slot::kPoleImag) =
      List(pairs, [pairs](int i) { return pairs == 1 ? .5 : .15 + .85 * i / (pairs - 1); });
  record.Slot(slot::kYzero) = List(counts.omegaZeros, [](int i) { return 1.1 * std::pow(1.3, i); });
  record.Slot(slot::kZreal) =
      List(zeroPairs, [&counts](int i) { return i < counts.leftPairs ? .3 : -.3; });
  record.Slot(slot::kZimag) = List(zeroPairs, [](int i) { return 1 + .3 * i; });
  record.Slot(slot::kSigmaZero) = ".5";
}

bool HoldsFirstNull(const ResponseRecord& record) {
  return record.Slot(slot::kYzero).starts_with("1 ");
}

}  // namespace

Counts CountsOf(const Filter& filter) {
  Counts counts;
  for (const auto& pole : filter.poles) ++(pole.imag() == 0 ? counts.sigmaPoles : counts.polePairs);
  for (const auto& zero : filter.zeros) {
    if (zero.imag() == 0) {
      ++counts.sigmaZeros;
    } else if (zero.real() == 0) {
      ++counts.omegaZeros;
    } else {
      ++(zero.real() < 0 ? counts.leftPairs : counts.rightPairs);
    }
  }
  return counts;
}

ResponseRecord MakeRecord(const Counts& counts, const std::vector<Sample>& samples,
                          const Units& units) {
  ResponseRecord record;
  record.slots = {"N", "0", "0", "0", "N", "10"};
  record.Slot(slot::kFreqNorm) = Digits(units.freqNorm);
  record.Slot(slot::kNPoles) = Format("%d %d", counts.sigmaPoles, counts.polePairs);
  record.Slot(slot::kSigmaZeroWanted) = counts.sigmaZeros > 0 ? "Y" : "N";
  record.Slot(slot::kDoublet) = record.Slot(slot::kLossless) = "N";
  record.Slot(slot::kZeroCounts) =
      Format("%d %d 0", counts.omegaZeros, counts.leftPairs + counts.rightPairs);
  record.Slot(slot::kGain) = "1";
  record.Slot(slot::kLowestXY) = ".001";
  record.Slot(slot::kMaxXY) = "20";
  PutStarts(record, counts);
  record.nFreqPoints = static_cast<std::int16_t>(samples.size());
  record.passband.Resize(record.nFreqPoints + 1);
  record.delay.Resize(1);
  for (int row = 1; row <= record.nFreqPoints; ++row) {
    const Sample& sample = samples[static_cast<std::size_t>(row - 1)];
    record.passband.At(row, 1) = Digits(sample.frequency * units.freqNorm);
    record.passband.At(row, 2) = Digits(sample.yin);
    record.passband.At(row, 3) = Digits(sample.yout * units.yout);
    record.passband.At(row, 4) = "1";
  }
  return record;
}

void HoldFirstNull(ResponseRecord& record) {
  std::string& zeros = record.Slot(slot::kYzero);
  zeros.replace(0, zeros.find(' '), "1");
}

void AddDelayRows(ResponseRecord& record, const std::function<double(double)>& delay, double end,
                  int rows) {
  const double freqNorm = ParseNumber(record.Slot(slot::kFreqNorm)).value_or(1);
  const double unit = 1000 / (2 * std::numbers::pi * freqNorm);
  double top = 0;
  for (int i = 0; i < rows; ++i) top = std::max(top, delay(end * i / (rows - 1)));
  record.Slot(slot::kEqualDelay) = "Y";
  record.nDelayPoints = static_cast<std::int16_t>(rows);
  record.delay.Resize(rows + 1);
  for (int row = 1; row <= rows; ++row) {
    const double w = end * (row - 1) / (rows - 1);
    record.delay.At(row, 1) = Digits(w * freqNorm);
    record.delay.At(row, 2) = Digits(unit * (1.2 * top - delay(w)));
  }
}

ResponseRecord WithoutStarts(const ResponseRecord& record) {
  ResponseRecord empty = record;
  for (const int slot : {slot::kSigmaPoles, slot::kPoleReal, slot::kPoleImag, slot::kSigmaZero,
                         slot::kYzero, slot::kZreal, slot::kZimag, slot::kGain}) {
    if (slot != slot::kYzero || !HoldsFirstNull(record)) empty.Slot(slot).clear();
  }
  return empty;
}

ResponseRecord WithRandomStarts(const ResponseRecord& record, unsigned seed) {
  ResponseRecord random = record;
  std::mt19937 generator(seed);
  const auto unit = [&generator] {
    return std::uniform_real_distribution<double>(0, 1)(generator);
  };
  const auto refill = [&random](int slot, const std::function<double()>& value) {
    const auto count = static_cast<int>(Words(random.Slot(slot)).size());
    random.Slot(slot) = List(count, [&value](int) { return value(); });
  };
  refill(slot::kSigmaPoles, [&] { return .02 * std::pow(100, unit()); });
  refill(slot::kPoleReal, [&] { return .02 * std::pow(100, unit()); });
  refill(slot::kPoleImag, [&] { return 2 * unit(); });
  refill(slot::kYzero, [&] { return 1.001 + 4 * unit() * unit(); });
  if (HoldsFirstNull(record)) HoldFirstNull(random);
  return random;
}

}  // namespace polefit::families

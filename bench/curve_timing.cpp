// How long the curves of H(s) take: 2,000 frequencies at 20 pole pairs, median of many.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "solver/model/step_response.h"
#include "solver/model/transfer_function.h"

namespace {

using namespace polefit;

ResponseRecord TwentyPairs() {
  ResponseRecord record;
  for (int number = 1; number <= kSlotCount; ++number) record.Slot(number) = "0";
  record.Slot(slot::kFreqNorm) = "10";
  record.Slot(slot::kNPoles) = "0 20";
  for (int i = 0; i < 20; ++i) {
    record.Slot(slot::kPoleReal) += (i == 0 ? "" : " ") + std::to_string(.1 + .02 * i);
    record.Slot(slot::kPoleImag) += (i == 0 ? "" : " ") + std::to_string(.05 + .05 * i);
  }
  record.Slot(slot::kPoleReal).erase(0, 1);
  record.Slot(slot::kPoleImag).erase(0, 1);
  record.Slot(slot::kZeroCounts) = "0 0 0";
  record.Slot(slot::kGain) = "1";
  record.Slot(slot::kLowestXY) = ".005";
  record.Slot(slot::kMaxXY) = "5";
  return record;
}

double MedianMilliseconds(const std::function<void()>& work) {
  constexpr std::size_t kTimes = 101;
  std::vector<double> times;
  for (std::size_t i = 0; i < kTimes; ++i) {
    const auto start = std::chrono::steady_clock::now();
    work();
    times.push_back(
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
            .count());
  }
  std::nth_element(times.begin(), times.begin() + kTimes / 2, times.end());
  return times[kTimes / 2];
}

}  // namespace

int main() {
  std::vector<Finding> findings;
  const auto problem = ReadSharedConstellation(TwentyPairs(), findings);
  const TransferFunction h(*problem);
  std::vector<double> megahertz;
  for (int i = 0; i < 2000; ++i) megahertz.push_back(.01 * i);
  double sum = 0;
  const auto tell = [&](const char* what, const std::function<std::vector<double>()>& curve) {
    std::printf("%-12s %7.3f ms\n", what, MedianMilliseconds([&] { sum += curve()[1999]; }));
  };
  tell("magnitude", [&] { return h.Magnitudes(megahertz); });
  tell("delay", [&] { return h.GroupDelays(megahertz); });
  tell("phase", [&] { return h.Phases(megahertz); });
  tell("step", [&] { return SettledStepResponse(h, 2000).values; });
  return sum == 0 ? 1 : 0;
}

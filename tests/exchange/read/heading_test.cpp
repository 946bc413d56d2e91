#include "exchange/read/heading.h"

#include <gtest/gtest.h>

namespace polefit::testing {
namespace {

TEST(HeadingTest, SaysWhatItsColumnIs) {
  const std::pair<Quantity, std::vector<const char*>> cases[] = {
      {Quantity::frequency, {"Frequency (GHz)", "freq_MHz", "fMHz", "[Hz]", "Frequenz im MHz"}},
      {Quantity::decibel,
       {"S21 dB", "dB(S(2,1)) []", "S21 Log Mag(dB)", "20*log10(|S21|)", "vdb(2)", "S21dB",
        "Frequency response (dB)"}},
      {Quantity::real, {"re:Trc1_S21"}},
      {Quantity::imaginary, {"S21(IMAG)"}},
      {Quantity::angle, {"ang_deg(S(2,1)) [deg]", "Phase"}},
      {Quantity::delay, {"Group Delay S21 (s)", "delay(S(2,1))"}},
      {Quantity::linear, {"|H(f)|", "|S21|", "Betrag"}},
      {Quantity::weight, {"Weight"}},
      {Quantity::index, {"Index"}},
      {Quantity::unknown, {"Gain", ""}}};
  for (const auto& [quantity, headings] : cases) {
    for (const char* const heading : headings) {
      EXPECT_EQ(MeaningOf(heading).quantity, quantity) << heading;
    }
  }
}

TEST(HeadingTest, SaysTheUnit) {
  EXPECT_EQ(MeaningOf("Freq.(KHZ)").frequencyUnit, FrequencyUnit::kilohertz);
  EXPECT_EQ(MeaningOf("Frequency").frequencyUnit, std::nullopt);
  const std::pair<const char*, std::optional<DelayUnit>> delays[] = {
      {"Group Delay (s)", DelayUnit::seconds}, {"Delay [µs]", DelayUnit::microseconds},
      {"tau / ps", DelayUnit::picoseconds},    {"Laufzeit in ns", DelayUnit::nanoseconds},
      {"delay_ns", DelayUnit::nanoseconds},    {"delay(S(2,1))", std::nullopt},
      {"Group Delay S21", std::nullopt}};
  for (const auto& [heading, unit] : delays) EXPECT_EQ(MeaningOf(heading).delayUnit, unit);
  EXPECT_EQ(MeaningOf("Phase (rad)").angleUnit, AngleUnit::radians);
}

}  // namespace
}  // namespace polefit::testing

#include "exchange/read/heading.h"

#include <gtest/gtest.h>

namespace polefit::testing {
namespace {

TEST(HeadingTest, SaysWhatItsColumnIs) {
  const std::pair<const char*, Quantity> cases[] = {{"Frequency (GHz)", Quantity::frequency},
                                                    {"freq_MHz", Quantity::frequency},
                                                    {"fMHz", Quantity::frequency},
                                                    {"[Hz]", Quantity::frequency},
                                                    {"Frequenz im MHz", Quantity::frequency},
                                                    {"S21 dB", Quantity::decibel},
                                                    {"dB(S(2,1)) []", Quantity::decibel},
                                                    {"S21 Log Mag(dB)", Quantity::decibel},
                                                    {"20*log10(|S21|)", Quantity::decibel},
                                                    {"vdb(2)", Quantity::decibel},
                                                    {"re:Trc1_S21", Quantity::real},
                                                    {"S21(IMAG)", Quantity::imaginary},
                                                    {"ang_deg(S(2,1)) [deg]", Quantity::angle},
                                                    {"Phase", Quantity::angle},
                                                    {"Group Delay S21 (s)", Quantity::delay},
                                                    {"delay(S(2,1))", Quantity::delay},
                                                    {"S21dB", Quantity::decibel},
                                                    {"Frequency response (dB)", Quantity::decibel},
                                                    {"|H(f)|", Quantity::linear},
                                                    {"|S21|", Quantity::linear},
                                                    {"Betrag", Quantity::linear},
                                                    {"Weight", Quantity::weight},
                                                    {"Index", Quantity::index},
                                                    {"Gain", Quantity::unknown},
                                                    {"", Quantity::unknown}};
  for (const auto& [heading, quantity] : cases) {
    EXPECT_EQ(MeaningOf(heading).quantity, quantity) << heading;
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

#include "base/number.h"

#include <gtest/gtest.h>

#include <clocale>

#include "base/error_of.h"

namespace polefit::testing {
namespace {

TEST(Number, IsReadLeniently) {
  const std::pair<const char*, double> cases[] = {
      {"", 0},       {"abc", 0},    {" 12", 12},       {"1 2 3x4", 123}, {"-.5", -.5},
      {"+7", 7},     {"1e3", 1000}, {"1 e - 2", 0.01}, {"2e", 2},        {"2e+x", 2},
      {"3.", 3},     {".", 0},      {"-", 0},          {"0,5", 0},       {"1.2.3", 1.2},
      {"\t5", 0},    {"--5", 0},    {"+-5", 0},        {"nan", 0},       {"inf", 0},
      {"1e-400", 0}, {"0x1F", 0},   {"1E+2", 100},     {"12,5", 12},     {"-0.5 rows", -.5}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(ReadNumber(text), expected) << text;
}

TEST(Number, TooLargeForADoubleIsAnOverflowAndTooSmallIsZero) {
  const std::string nines(400, '9');
  for (const std::string& text : {std::string("1e400"), "-" + nines, nines + "e-5", "1e" + nines}) {
    EXPECT_EQ(ErrorOf([&] { ReadNumber(text); }), 6) << text;
  }
  const std::string zeros = "0." + std::string(400, '0');
  for (const std::string& text : {zeros + "1", zeros + "1e5", zeros + "1e-5", "1e-" + nines}) {
    EXPECT_EQ(ReadNumber(text), 0) << text;
  }
}

TEST(Number, BecomesASixteenBitIntegerWithHalvesToEven) {
  const std::pair<double, int> cases[] = {{0.5, 0},         {1.5, 2},          {2.5, 2},
                                          {2.51, 3},        {-0.5, 0},         {-1.5, -2},
                                          {32766.5, 32766}, {-32768.5, -32768}};
  for (const auto& [number, expected] : cases) EXPECT_EQ(ToInteger16(number), expected) << number;
  for (const double number : {32767.5, 32768.0, -32769.0, 1e300}) {
    EXPECT_EQ(ErrorOf([=] { ToInteger16(number); }), 6) << number;
  }
}

TEST(Number, IsWrittenTheSameInEveryLocale) {
  const char* const former = std::setlocale(LC_ALL, "de_DE.UTF-8");
  EXPECT_EQ(ReadNumber("1.5"), 1.5);
  EXPECT_EQ(ShortestText(0.25F) + "|" + ShortestText(1.0F), "0.25|1");
  EXPECT_EQ(SignedText(12) + "|" + SignedText(0) + "|" + SignedText(-3), " 12| 0|-3");
  if (former != nullptr) std::setlocale(LC_ALL, "C");
}

}  // namespace
}  // namespace polefit::testing

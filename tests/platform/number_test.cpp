#include "platform/number.h"

#include <gtest/gtest.h>

#include <clocale>

#include "platform/error_of.h"

namespace polefit {
namespace {

using testing::ErrorOf;

TEST(Number, IsReadLeniently) {
  const std::pair<const char*, double> cases[] = {
      {"", 0},       {"abc", 0},    {" 12", 12},       {"1 2 3x4", 123}, {"-.5", -.5},
      {"+7", 7},     {"1e3", 1000}, {"1 e - 2", 0.01}, {"2e", 2},        {"2e+x", 2},
      {"3.", 3},     {".", 0},      {"-", 0},          {"0,5", 0},       {"1.2.3", 1.2},
      {"\t5", 0},    {"--5", 0},    {"+-5", 0},        {"nan", 0},       {"inf", 0},
      {"1e-400", 0}, {"0x1F", 0},   {"1E+2", 100},     {"12,5", 12},     {"-0.5 rows", -.5}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(ReadNumber(text), expected) << text;
}

TEST(Number, TooLargeForADoubleIsAnOverflow) {
  EXPECT_EQ(ErrorOf([] { ReadNumber("1e400"); }), 6);
  EXPECT_EQ(ErrorOf([] { ReadNumber("-" + std::string(400, '9')); }), 6);
  EXPECT_EQ(ErrorOf([] { ReadNumber(std::string(400, '9') + "e-5"); }), 6);
  EXPECT_EQ(ErrorOf([] { ReadNumber("1e99999999999999999999"); }), 6);
  for (const char* const end : {"1", "1e5", "1e-5"}) {
    EXPECT_EQ(ReadNumber("0." + std::string(400, '0') + end), 0) << end;
  }
}

TEST(Number, BecomesASixteenBitIntegerWithHalvesToEven) {
  const std::pair<double, int> cases[] = {{0.5, 0},  {1.5, 2},          {2.5, 2},
                                          {-0.5, 0}, {-1.5, -2},        {32767.5 - 1, 32766},
                                          {2.51, 3}, {-32768.5, -32768}};
  for (const auto& [number, expected] : cases) EXPECT_EQ(ToInteger16(number), expected) << number;
  for (const double number : {32767.5, 32768.0, -32769.0, 1e300}) {
    EXPECT_EQ(ErrorOf([=] { ToInteger16(number); }), 6) << number;
  }
}

TEST(Number, IsWrittenTheSameInEveryLocale) {
  const char* const former = std::setlocale(LC_ALL, "de_DE.UTF-8");
  EXPECT_EQ(ReadNumber("1.5"), 1.5);
  EXPECT_EQ(ShortestText(0.25F), "0.25");
  EXPECT_EQ(ShortestText(1.0F), "1");
  EXPECT_EQ(SignedText(12), " 12");
  EXPECT_EQ(SignedText(0), " 0");
  EXPECT_EQ(SignedText(-3), "-3");
  if (former != nullptr) std::setlocale(LC_ALL, "C");
}

}  // namespace
}  // namespace polefit

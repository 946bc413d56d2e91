#include "exchange/read/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

namespace polefit::testing {
namespace {

TEST(NumberTextTest, ACellIsANumberOrNot) {
  const std::tuple<const char*, char, double> numbers[] = {
      {"1.5", '.', 1.5}, {"+1.0E+006", '.', 1e6},    {"-.5d-3", '.', -5e-4},  {"1,5", ',', 1.5},
      {"2.", '.', 2},    {"\u22123,25", ',', -3.25}, {"1.5D+02", '.', 150.0}, {"007", '.', 7}};
  for (const auto& [text, mark, value] : numbers) EXPECT_EQ(CellNumber(text, mark), value) << text;
  const std::pair<const char*, char> others[] = {
      {"", '.'},     {"1,5", '.'},     {"1.234,5", ','}, {"1,234.5", '.'}, {"1.5", ','},
      {"nan", '.'},  {"inf", '.'},     {"1e999", '.'},   {"0x10", '.'},    {"1 2", '.'},
      {"1.5e", '.'}, {"1.5MHz", '.'},  {"--1", '.'},     {"+-1", '.'},     {"-", '.'},
      {".", '.'},    {"1'000.0", '.'}, {"-inf", '.'}};
  for (const auto& [text, mark] : others) EXPECT_TRUE(std::isnan(CellNumber(text, mark))) << text;
  EXPECT_TRUE(std::isnan(CellNumber(std::string(65, '1'), '.')));
}

TEST(NumberTextTest, ThePointMovesWithoutArithmetic) {
  const std::tuple<const char*, int, const char*> cases[] = {
      {"1500000", -6, "1.5"},
      {"1.50", 0, "1.50"},
      {"1.5E+01", 0, "1.5E+01"},
      {"1.0E+06", -6, "1"},
      {"-2.5e-9", 9, "-2.5"},
      {"0.0123456789012345678", 3, "12.3456789012345678"},
      {"15", -6, "0.000015"},
      {"+.5", 3, "500"},
      {"0", -6, "0"},
      {"0.000", 3, "0"},
      {"123.456", -3, "0.123456"},
      {"1e3", -3, "1"}};
  for (const auto& [text, places, moved] : cases) EXPECT_EQ(MovePoint(text, places), moved) << text;
  EXPECT_EQ(NumberText("1,5D+02", ','), "1.5E+02");
}

}  // namespace
}  // namespace polefit::testing

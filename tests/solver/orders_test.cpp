#include "solver/orders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "base/text_format.h"
#include "bench/families/families.h"
#include "solver/example_problem.h"
#include "solver/model/transfer_function.h"

namespace polefit::testing {
namespace {

/// The magnitude of a Butterworth low-pass, with a little noise that repeats.
ResponseRecord Butterworth(int order, double noise) {
  ResponseRecord record = ExampleRecord("Ex-Yzero.101", "2=0; 5=10; 11=0 0 0; 14=22");
  record.nFreqPoints = 41;
  record.passband.Resize(record.nFreqPoints + 1);
  unsigned random = 7;
  for (int row = 1; row <= record.nFreqPoints; ++row) {
    random = random * 1664525U + 1013904223U;
    const double w = (row - 1) / 20.0;
    const double error = noise * (random / 4294967296.0 - .5);
    const double magnitude = 1 / std::sqrt(1 + std::pow(w, 2 * order)) + error;
    record.passband.At(row, 1) = Format("%.15g", 10 * w);
    record.passband.At(row, 2) = "1";
    record.passband.At(row, 3) = Format("%.15g", std::abs(magnitude));
    record.passband.At(row, 4) = "1";
  }
  return record;
}

TEST(Orders, TheTrueOneStandsOut) {
  const auto never = [] { return false; };
  for (const int order : {3, 4, 5}) {
    const OrderTable table = TryOrders(Butterworth(order, .01), 2, 8, never);
    ASSERT_EQ(table.fits.size(), 7);
    ASSERT_TRUE(table.best) << order;
    EXPECT_EQ(table.fits[*table.best].poles, order);
    EXPECT_THAT(OrdersAsText(table), ::testing::HasSubstr("stands out\n"));
    const auto json = nlohmann::json::parse(OrdersAsJson(table));
    EXPECT_EQ(json["best"], order);
    EXPECT_EQ(json["orders"][1]["F"].get<double>(), table.fits[1].cost);
  }
  const OrderTable tooFew = TryOrders(Butterworth(6, .001), 2, 4, never);
  EXPECT_FALSE(tooFew.best);
  EXPECT_THAT(OrdersAsText(tooFew), ::testing::EndsWith("none stands out\n"));
}

TEST(Orders, StartFromThePointsWhateverZerosAreTyped) {
  for (const families::FamilyProblem& family : families::TextbookProblems()) {
    if (family.name != "inverse Chebyshev 8") continue;
    const OrderTable table = TryOrders(family.record, 8, 9, [] { return false; });
    ASSERT_TRUE(table.best);
    EXPECT_EQ(table.fits[*table.best].poles, 8);
    EXPECT_LT(table.fits[*table.best].cost, 1e-13);
  }
}

TEST(Orders, AreAtLeastAsManyAsTheZeros) {
  ResponseRecord record = ExampleRecord("Ex-Delay.101");  // 2 zeros besides the lossless one
  const OrderTable table = TryOrders(record, 1, 3, [] { return false; });
  ASSERT_EQ(table.fits.size(), 2);
  EXPECT_EQ(table.fits[0].poles, 2);
  record.Slot(slot::kFreqNorm) = "x";
  EXPECT_TRUE(HasFault(TryOrders(record, 1, 3, [] { return false; }).findings));
}

}  // namespace
}  // namespace polefit::testing

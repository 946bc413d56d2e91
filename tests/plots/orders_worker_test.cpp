#include "plots/orders_worker.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cmath>
#include <semaphore>

#include "plots/fit_curves.h"
#include "plots/order_diagram.h"
#include "solver/example_problem.h"

namespace polefit::testing {
namespace {

TEST(OrdersWorker, FindsWhatTheSolverFindsAndTellsEachOnTheWay) {
  const ResponseRecord record = ExampleRecord("Ex-Zpair.1");
  std::counting_semaphore<> news(0);
  OrdersWorker worker(record, 2, 5, [&news] { news.release(); });
  std::optional<OrderTable> whole;
  std::vector<int> told;
  while (!whole) {
    news.acquire();
    for (const OrderFit& fit : worker.TakeFits()) told.push_back(fit.poles);
    whole = worker.TakeTable();
  }
  EXPECT_THAT(told, ::testing::ElementsAre(2, 3, 4, 5));
  const OrderTable& table = *whole;
  const OrderTable wanted = TryOrders(record, 2, 5, [] { return false; });
  ASSERT_EQ(table.fits.size(), wanted.fits.size());
  for (std::size_t i = 0; i < wanted.fits.size(); ++i) {
    EXPECT_EQ(table.fits[i].cost, wanted.fits[i].cost);
  }
  // The answers of a fit are the fit: the zeros, which were fitted too, are not among them.
  const OrderFit& best = wanted.fits[3];
  ResponseRecord taken = record;
  for (std::size_t i = 0; i < 4; ++i) taken.slots.at(slot::kNPoles - 1 + i) = best.answers.at(i);
  std::vector<Finding> findings;
  const auto curves = CurvesOf(taken, CurveRole::typed, "typed", findings);
  ASSERT_TRUE(curves);
  EXPECT_EQ(curves->h->PoleCount(), 5);
}

TEST(OrdersWorker, EndsWhileItTries) {
  const ResponseRecord record = ExampleRecord("Ex-Delay.101");
  for (int i = 0; i < 4; ++i) {
    std::atomic<int> news = 0;
    {
      const OrdersWorker worker(record, 1, 40, [&news] { ++news; });
      std::this_thread::sleep_for(std::chrono::milliseconds(2 * i));
    }
    EXPECT_LT(news, 40) << "40 orders take longer";
  }
}

TEST(OrderDiagram, ShowsTheErrorAgainstTheOrderAndMarksTheBest) {
  OrderTable table;
  EXPECT_FALSE(OrderDiagram(table).hasFigures);
  for (int poles = 2; poles <= 4; ++poles) {
    OrderFit fit;
    fit.poles = poles;
    fit.rms = poles == 4 ? 0 : std::pow(10.0, -poles);
    table.fits.push_back(fit);
  }
  table.best = 1;
  const Diagram diagram = OrderDiagram(table);
  EXPECT_TRUE(diagram.y.isLogarithmic);
  ASSERT_EQ(diagram.series.size(), 3U);
  EXPECT_THAT(diagram.series[0].x, ::testing::ElementsAre(2, 3, 4));
  EXPECT_GT(diagram.series[0].y[2], 0) << "an exact fit has its place on the axis too";
  EXPECT_THAT(diagram.series[2].x, ::testing::ElementsAre(3));
  EXPECT_THAT(diagram.sentence, ::testing::HasSubstr("3 poles stand out"));
}

}  // namespace
}  // namespace polefit::testing

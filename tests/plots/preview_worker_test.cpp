#include "plots/preview_worker.h"

#include <gtest/gtest.h>

#include <chrono>
#include <semaphore>

#include "solver/example_problem.h"

namespace polefit::testing {
namespace {

TEST(Preview, IsTheFitThatARunWouldGive) {
  const Preview preview = MakePreview(ExampleRecord("Ex-Yzero.101"), [] { return false; });
  ASSERT_TRUE(preview.curves);
  EXPECT_NEAR(preview.curves->h->Cost() / 2.277862e-06, 1, 1e-3);
  EXPECT_FALSE(MakePreview(ExampleRecord("Ex-Yzero.101"), [] { return true; }).curves);
  EXPECT_FALSE(MakePreview(ExampleRecord("Ex-Yzero.101", "8=x"), [] { return false; }).curves);
}

TEST(PreviewWorker, GivesTheLastOfManyRequests) {
  std::counting_semaphore<> found(0);
  PreviewWorker worker([&found] { found.release(); });
  for (int i = 0; i < 20; ++i) worker.Request(ExampleRecord("Ex-Zpair.1"));
  worker.Request(ExampleRecord("Ex-Zpair.1", "5=11"));
  std::optional<Preview> last;
  while (!last) {
    found.acquire();
    last = worker.TakeFound();
  }
  EXPECT_EQ(last->curves->h->FreqNorm(), 11);
  EXPECT_FALSE(worker.TakeFound());
  worker.Request(ExampleRecord("Ex-Zpair.1"));
  found.acquire();
  worker.Cancel();
  EXPECT_FALSE(worker.TakeFound()) << "the answers have changed";
}

TEST(PreviewWorker, EndsWhileItSolves) {
  for (int i = 0; i < 5; ++i) {
    PreviewWorker worker([] {});
    worker.Request(ExampleRecord("Ex-Yzero.101"));
    std::this_thread::sleep_for(std::chrono::milliseconds(i));
    if (i == 3) worker.Cancel();
  }
}

}  // namespace
}  // namespace polefit::testing

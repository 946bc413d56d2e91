#include "plots/preview_worker.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>

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
  std::promise<double> last;
  PreviewWorker worker([&last](const Preview& preview) {
    if (preview.record.Slot(slot::kFreqNorm) == "11") last.set_value(preview.curves->h->FreqNorm());
  });
  for (int i = 0; i < 20; ++i) worker.Request(ExampleRecord("Ex-Zpair.1"));
  worker.Request(ExampleRecord("Ex-Zpair.1", "5=11"));
  EXPECT_EQ(last.get_future().get(), 11);
}

TEST(PreviewWorker, EndsWhileItSolves) {
  for (int i = 0; i < 5; ++i) {
    PreviewWorker worker([](const Preview&) {});
    worker.Request(ExampleRecord("Ex-Yzero.101"));
    std::this_thread::sleep_for(std::chrono::milliseconds(i));
    if (i == 3) worker.Cancel();
  }
}

}  // namespace
}  // namespace polefit::testing

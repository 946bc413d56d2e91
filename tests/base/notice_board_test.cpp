#include <gtest/gtest.h>

#include <string>

#include "base/notice_board.h"

namespace polefit::testing {
namespace {

TEST(NoticeBoard, ShowsTheMostUrgentFirstAndOneOfEachSubject) {
  NoticeBoard board;
  int changes = 0;
  board.onChange = [&] { ++changes; };
  const auto post = [&](const char* about, Urgency urgency, const char* sentence) {
    board.Post({about, urgency, sentence});
  };
  post("a", Urgency::asks, "1");
  post("b", Urgency::dataAtRisk, "2");
  post("c", Urgency::asks, "3");
  post("d", Urgency::worthKnowing, "4");
  post("a", Urgency::asks, "5");
  board.Remove("d");
  board.Remove("nothing");
  std::string order;
  for (const Notice& notice : board.Waiting()) order += notice.sentence;
  EXPECT_EQ(order, "235");
  EXPECT_EQ(changes, 7);
}

}  // namespace
}  // namespace polefit::testing

#include "runs/run_log.h"

#include <gmock/gmock.h>

#include "platform/scripted_host.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;

TEST(RunLogTest, ProgressIsFoundInAnyLineThatTellsIt) {
  const std::pair<const char*, std::optional<RunProgress>> cases[] = {
      {"start 1, problem 2, step 9, evaluations 16 of 2000, rho 1e-5", RunProgress{16, 2000}},
      {"120 of 2000", RunProgress{120, 2000}},
      {"one of many, 3 of 7; more", RunProgress{3, 7}},
      {"start 1: typed values", {}},
      {"5 of 0", {}},
      {"(6 of 8 starts agree)", {}},
      {" of ", {}},
      {"9 of 9999999999", {}}};
  for (const auto& [line, expected] : cases) EXPECT_EQ(ProgressOf(line), expected) << line;
}

class RunLogFile : public ::testing::Test {
 protected:
  void Append(const std::string& bytes) { WriteBytes(path_, FileBytes(path_) + bytes); }
  RunLog::News Read() { return log_.Read(host_, path_); }

  ScriptedHost host_;
  std::string path_ = host_.Path("log");
  RunLog log_;
};

TEST_F(RunLogFile, LinesComeWhenTheyAreWholeAndInTheirLetters) {
  EXPECT_THAT(Read().lines, ElementsAre());
  Append("Gr\xFCn \x99\r\nf\xC3\xBCr\n\n1 of");
  EXPECT_THAT(Read().lines, ElementsAre("Grün ™", "für", ""));
  Append(" 9");
  EXPECT_THAT(Read().lines, ElementsAre());
  EXPECT_EQ(log_.LineFromEnd(0), "für");
  EXPECT_EQ(log_.TakeUnfinishedLine(), "1 of 9");
  EXPECT_EQ(log_.Progress(), (RunProgress{1, 9}));
  EXPECT_EQ(log_.LineFromEnd(0), "1 of 9");
  EXPECT_EQ(log_.LineFromEnd(1), "für");
}

TEST_F(RunLogFile, OfAFloodTheEndIsRead) {
  std::string flood;
  while (flood.size() < 20'000'000) flood += "line of a flood that nobody can read\n";
  Append(flood + "last\n");
  const RunLog::News news = Read();
  EXPECT_TRUE(news.isCut);
  EXPECT_LE(news.lines.size(), 5000U);
  EXPECT_EQ(news.lines.front(), "line of a flood that nobody can read") << "none is torn";
  EXPECT_EQ(news.lines.back(), "last");
  Append(std::string(100'000, '\n'));
  EXPECT_EQ(Read().lines.size(), 5000U);
}

TEST_F(RunLogFile, ALineWithoutEndIsCutAndWhatFollowsItIsReadAgain) {
  for (int i = 0; i < 10; ++i) {
    Append(std::string(200'000, 'x'));
    EXPECT_THAT(Read().lines, ElementsAre());
  }
  Append("\nnext\n");
  EXPECT_THAT(Read().lines, ElementsAre(std::string(4096, 'x'), "next"));
  std::string wide;
  for (int i = 0; i < 9000; ++i) wide += "€";
  Append(wide + "\n");
  EXPECT_EQ(Read().lines.at(0), wide.substr(0, 3 * 4096));
}

}  // namespace
}  // namespace polefit::testing

#include "demos/demo_runner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "demos/introduction.h"
#include "form/scripted_program.h"

namespace polefit {
namespace {

using ::testing::ElementsAre;
using testing::WriteBytes;

class DemoTest : public ::testing::Test {
 protected:
  testing::ScriptedProgram scripted_;
  testing::ScriptedHost& host_ = scripted_.host;
  Program& program_ = scripted_.program;
};

TEST_F(DemoTest, RunsTheChosenExampleFromTheUserFolder) {
  WriteBytes(host_.Path("DOSstart.cvx"), "");
  ChooseDemo(program_, 5);
  RunDemo(program_);
  EXPECT_EQ(program_.RunMode, "Demo");
  EXPECT_THAT(host_.transcript,
              ElementsAre("OpenForWriting @/re-start.reg", "CloseFile",
                          "StartProgram 0 regedit /s @/re-start.reg",
                          "StartProgram 2 COMMAND.COM /C COPY @/DOSstart.cvx @/DOSstart.tmp",
                          "StartProgram 1 @/Tessel.hz/run-Freq.pif Ex-Delay.111 "
                          "@/Tessel.hz/User @ " +
                              host_.Root().substr(0, 2)));
}

TEST_F(DemoTest, WithNoneChosenTheCurrentNameIsRun) {
  WriteBytes(host_.Path("DOSstart.cvx"), "");
  program_.files.currentFileName = "mine.txt";
  program_.files.currentFolder = "/elsewhere";
  RunDemo(program_);
  EXPECT_THAT(host_.transcript.back(),
              ::testing::HasSubstr("run-Freq.pif mine.txt @/Tessel.hz/User "));
}

TEST_F(DemoTest, ChangedDataAreOfferedForSavingFirst) {
  EXPECT_TRUE(MayShowDemos(program_));
  program_.DataChanged = 1;
  host_.AnswerBox(Answer::cancel);
  EXPECT_FALSE(MayShowDemos(program_));
  host_.AnswerBox(Answer::no);
  EXPECT_TRUE(MayShowDemos(program_));
}

TEST_F(DemoTest, TheIntroductionIsForStartsWithoutSettings) {
  EXPECT_TRUE(WantsIntroduction(program_));
  EXPECT_EQ(program_.files.currentFolder, "null");
  EXPECT_EQ(host_.CurrentFolder(), host_.Path("Tessel.hz"));
  WriteBytes("Polefit.ini", "");
  EXPECT_FALSE(WantsIntroduction(program_));
}

}  // namespace
}  // namespace polefit

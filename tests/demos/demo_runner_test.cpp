#include "demos/demo_runner.h"

#include <gmock/gmock.h>

#include "form/scripted_program.h"

namespace polefit::testing {
namespace {

using ::testing::HasSubstr;

struct DemoTest : ::testing::Test, ScriptedProgram {};

TEST_F(DemoTest, TheChosenExampleOrElseTheCurrentNameIsRunFromTheUserFolder) {
  WriteBytes(host.Path("DOSstart.cvx"), "");
  program.files.currentFileName = "mine.txt";
  program.files.currentFolder = "/elsewhere";
  RunDemo(program);
  EXPECT_THAT(host.transcript.back(), HasSubstr("run-Freq.pif mine.txt @/Tessel.hz/User @ "));
  ChooseDemo(program, 5);
  RunDemo(program);
  EXPECT_THAT(host.transcript.back(), HasSubstr("run-Freq.pif Ex-Delay.111 @/Tessel.hz/User @ "));
  EXPECT_EQ(program.document.RunMode, "Demo");
}

}  // namespace
}  // namespace polefit::testing

#include "platform/scripted_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "platform/error_of.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;

TEST(ScriptedHostTest, KeepsOneOrderedTranscript) {
  ScriptedHost host;
  host.AnswerBox(Answer::yes);
  host.AnswerDialog(host.Path("Tessel.hz/a.txt"));
  host.MessageBox("Go on?", message_style::kYesNoQuestion, "Title");
  CommonDialog dialog;
  dialog.title = "Open";
  dialog.fileName = "*.*";
  host.ShowOpen(dialog);
  host.OpenForWriting(dialog.fileName);
  host.WriteLine("x");
  host.CloseFile();
  host.StartProgram({"regedit", {"/s", host.Path("a.reg")}, WindowStyle::hidden});
  EXPECT_EQ(host.CurrentFolder(), host.Path("Tessel.hz"));
  EXPECT_THAT(host.transcript, ElementsAre("MessageBox 36 [Title] Go on? -> yes",
                                           "ShowOpen [Open] *.* -> @/Tessel.hz/a.txt",
                                           "OpenForWriting @/Tessel.hz/a.txt", "CloseFile",
                                           "StartProgram 0 regedit /s @/a.reg"));
}

TEST(ScriptedHostTest, FailsTheNthCalls) {
  ScriptedHost host;
  host.Fail("MakeFolder", 71, 2, 2);
  const auto make = [&](const char* name) {
    return ErrorOf([&] { host.MakeFolder(host.Path(name)); });
  };
  EXPECT_EQ(make("a"), 0);
  EXPECT_EQ(make("b"), 71);
  EXPECT_EQ(make("b"), 71);
  EXPECT_EQ(make("b"), 0);
  EXPECT_THAT(host.transcript, ElementsAre("MakeFolder @/a", "MakeFolder @/b -> error 71",
                                           "MakeFolder @/b -> error 71", "MakeFolder @/b"));
}

TEST(ScriptedHostTest, FailsATestThatDidNotScriptABox) {
  ScriptedHost host;
  EXPECT_NONFATAL_FAILURE(
      {
        try {
          host.MessageBox("?", 0, "t");
        } catch (const std::logic_error&) {
        }
      },
      "not scripted: MessageBox 0 [t] ?");
}

}  // namespace
}  // namespace polefit::testing

#include "platform/error_template.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/file_checks.h"
#include "platform/scripted_host.h"

namespace polefit {
namespace {

using ::testing::ElementsAre;
using testing::ScriptedHost;
using testing::WriteBytes;

const std::string kDriveDoor =
    "MessageBox 481 [In 'FileExists' routine ...] Put a floppy disk in the drive and cloce the "
    "drive door.";

TEST(ErrorTemplate, ADriveThatIsNotReadyIsTriedAgainOrPassedOver) {
  ScriptedHost host;
  WriteBytes(host.Path("x"), "");
  host.Fail("LookUpFile", 71);
  host.AnswerBox(Answer::ok);
  EXPECT_TRUE(FileExists(host, "x"));
  host.Fail("LookUpFile", 71);
  host.AnswerBox(Answer::cancel);
  EXPECT_FALSE(FileExists(host, "x"));
  EXPECT_THAT(host.transcript, ElementsAre("LookUpFile x -> error 71", kDriveDoor + " -> ok",
                                           "LookUpFile x -> error 71", kDriveDoor + " -> cancel"));
}

TEST(ErrorTemplate, AnUnavailableDeviceBringsItsMessageBackUntilItAnswers) {
  ScriptedHost host;
  host.Fail("LookUpFolder", 68, 1, 2);
  host.AnswerBox(Answer::ok);
  host.AnswerBox(Answer::ok);
  EXPECT_FALSE(dirExists(host, "E:"));
  const std::string message =
      "MessageBox 48 [In 'dirExists' routine ...] This drive or path does not exist: E: -> ok";
  EXPECT_THAT(host.transcript, ElementsAre("LookUpFolder E: -> error 68", message,
                                           "LookUpFolder E: -> error 68", message));
}

TEST(ErrorTemplate, ACancelledDialogIsSilent) {
  ScriptedHost host;
  host.Fail("LookUpFile", 32755);
  EXPECT_FALSE(FileExists(host, "x"));
  EXPECT_THAT(host.transcript, ElementsAre("LookUpFile x -> error 32755"));
}

TEST(ErrorTemplate, AnyOtherErrorIsShownAndEndsTheProgram) {
  ScriptedHost host;
  host.Fail("LookUpFile", 70);
  host.AnswerBox(Answer::ok);
  EXPECT_THROW(FileExists(host, "x"), ProgramEnded);
  EXPECT_THAT(host.transcript,
              ElementsAre("LookUpFile x -> error 70",
                          "MessageBox 16 [In 'FileExists' routine ...] Unexpected error # 70 "
                          "occured: Permission denied -> ok",
                          "EndProgram"));
}

}  // namespace
}  // namespace polefit

#include "platform/error_template.h"

#include <gtest/gtest.h>

#include "platform/file_checks.h"
#include "platform/scripted_host.h"

namespace polefit {
namespace {

using testing::ScriptedHost;
using testing::WriteBytes;

TEST(ErrorTemplate, TheChecksForFilesAndFoldersReportUnderTheirNames) {
  ScriptedHost host;
  WriteBytes(host.Path("x"), "");
  host.Fail("LookUpFile", 71, 1, 2);
  host.AnswerBox(Answer::ok);
  host.AnswerBox(Answer::cancel);
  EXPECT_FALSE(FileExists(host, "x"));
  EXPECT_EQ(host.TakeTranscript().back(),
            "MessageBox 481 [In 'FileExists' routine ...] Put a floppy disk in the drive and cloce "
            "the drive door. -> cancel");
  host.Fail("LookUpFile", 32755);
  EXPECT_FALSE(FileExists(host, "x"));
  EXPECT_EQ(host.TakeTranscript().size(), 1U) << "a cancelled dialog is silent";
  host.Fail("LookUpFolder", 68);
  host.AnswerBox(Answer::ok);
  EXPECT_FALSE(dirExists(host, "E:"));
  EXPECT_EQ(host.TakeTranscript().back(),
            "MessageBox 48 [In 'dirExists' routine ...] This drive or path does not exist: E: -> "
            "ok");
}

}  // namespace
}  // namespace polefit

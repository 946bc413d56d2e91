#include "responsefile/viewers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "form/scripted_program.h"
#include "platform/error_of.h"

namespace polefit {
namespace {

using ::testing::ElementsAre;
using testing::ErrorOf;
using testing::WriteBytes;

class ViewersTest : public ::testing::Test {
 protected:
  testing::ScriptedProgram scripted_;
  testing::ScriptedHost& host_ = scripted_.host;
  Program& program_ = scripted_.program;
};

TEST_F(ViewersTest, AnExampleOpensInTheEditorAndTheDialogFolderStays) {
  CommonDialog& dialog = program_.CMDialog1;
  dialog.initialFolder = "/data";
  dialog.cancelIsError = true;
  host_.AnswerDialog(scripted_.user + "/Ex-a b.1");
  ViewExampleFile(program_);
  EXPECT_THAT(host_.TakeTranscript(),
              ElementsAre("ShowOpen [Open an Example File for illustration]  -> "
                          "@/Tessel.hz/User/Ex-a b.1",
                          "StartProgram 3 notepad.exe @/Tessel.hz/User/Ex-a b.1"));
  EXPECT_EQ(host_.lastDialog.initialFolder, scripted_.user);
  EXPECT_EQ(host_.lastDialog.filter, "All Files (*.*)|*.*|Example Response Files (ex-*.*)|ex-*.*");
  EXPECT_EQ(host_.lastDialog.filterIndex, 2);
  host_.AnswerDialog("");
  ViewExampleFile(program_);
  EXPECT_EQ(host_.transcript.size(), 1U);
  EXPECT_EQ(dialog.initialFolder, "/data");
}

TEST_F(ViewersTest, TheReportOpensWhenThereIsOne) {
  host_.AnswerBox(Answer::ok);
  ViewLastOutput(program_);
  WriteBytes(host_.Path("Tessel.hz/~pft-out.txt"), "");
  ViewLastOutput(program_);
  OpenManual(program_);
  EXPECT_THAT(host_.transcript,
              ElementsAre("MessageBox 48 ['~pft-out.txt' output file not found.] Try a 'Submit' "
                          "command then retry this View option. -> ok",
                          "ShellExecuteA @/Tessel.hz/~pft-out.txt",
                          "ShellExecuteA @/Tessel.hz/manual.rtf"));
}

TEST_F(ViewersTest, SupportMailIsWaitedForAndAMissingClientIsPassedOn) {
  EmailSupport(program_);
  EXPECT_THAT(host_.TakeTranscript(),
              ElementsAre("StartProgram 1 c:\\program files\\outlook express\\msimn.exe "
                          "/mailurl:mailto:support@polefit.example?subject=Polefit 4.12 "
                          "questions/problems",
                          "WaitForSingleObject 4711"));
  host_.Fail("StartProgram", error_number::kFileNotFound);
  EXPECT_EQ(ErrorOf([&] { EmailSupport(program_); }), error_number::kFileNotFound);
}

}  // namespace
}  // namespace polefit

#include "demos/demo_runner.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "app/file_commands.h"
#include "app/form_load.h"
#include "app/version_store.h"
#include "demos/restore_examples.h"
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

TEST_F(DemoTest, TheDialogSaysWhatItWouldRun) {
  program.files.currentFileName = "";
  EXPECT_EQ(WhatRuns(program, false), "No example chosen");
  program.files.currentFileName = "vna.1";
  EXPECT_EQ(WhatRuns(program, false), "Runs vna.1, the current file");
  ChooseDemo(program, 5);
  EXPECT_EQ(WhatRuns(program, true), "Runs Ex-Delay.111");
}

TEST_F(DemoTest, OnlyChangedAndMissingExamplesArePutBackAndTheChangedOnesAreKept) {
  const std::string shipped = host.Path("Tessel.hz/Examples");
  host.MakeFolder(shipped);
  for (const Demo& demo : kDemos) {
    WriteBytes(shipped + "/" + std::string(demo.fileName), "1\nas shipped");
    WriteBytes(user + "/" + std::string(demo.fileName), "1\nas shipped");
  }
  host.ReplyToBox(Reply::ok);
  RestoreExamples(program);
  const std::string changed = user + "/Ex-CNTL.1";
  WriteBytes(changed, "1\nmine");
  host.DeleteFile(user + "/Ex-Zpair.1");
  host.TakeTranscript();
  host.AnswerChoice("Cancel");
  RestoreExamples(program);
  EXPECT_EQ(FileBytes(changed), "1\nmine");
  host.AnswerChoice("Restore");
  RestoreExamples(program);
  EXPECT_EQ(FileBytes(changed), "1\nas shipped");
  EXPECT_EQ(FileBytes(user + "/Ex-Zpair.1"), "1\nas shipped");
  VersionStore store(host);
  ASSERT_EQ(store.Of(changed).size(), 1U);
  EXPECT_EQ(store.BytesOf(store.Of(changed)[0]), "1\nmine");
  EXPECT_THAT(host.transcript[0], HasSubstr("Put back 'Ex-CNTL.1', 'Ex-Zpair.1' as shipped?"));
}

TEST_F(DemoTest, AnOpenExampleIsShownAsItWasShippedAfterTheQuestionAboutChanges) {
  const std::string shipped = host.Path("Tessel.hz/Examples");
  host.MakeFolder(shipped);
  for (const Demo& demo : kDemos) {
    for (const std::string& folder : {shipped, user}) {
      std::filesystem::copy(POLEFIT_EXAMPLES "/" + std::string(demo.fileName), folder);
    }
  }
  OpenNamedFile(program, user + "/Ex-CNTL.1");
  const std::string gain = form.Text("Gain");
  form.SetText("Gain", "777");
  FileSave(program);
  form.SetText("Gain", "778");
  const auto restore = [this](Reply answer) {
    host.AnswerChoice("Restore");
    host.ReplyToBox(answer);
    RestoreExamples(program);
    return form.Text("Gain");
  };
  EXPECT_EQ(restore(Reply::cancel), "778");
  EXPECT_EQ(restore(Reply::no), gain);
  FileSave(program);
  EXPECT_TRUE(program.notices.Waiting().empty()) << "nobody else has changed the file";
}

TEST_F(DemoTest, ARunKeepsTheReportAndValuesOfTheOneBefore) {
  WriteBytes(host.Path("DOSstart.cvx"), "");
  WriteBytes(host.Path("Tessel.hz/~pft-out.txt"), "1\nreport");
  WriteBytes(host.Path("Tessel.hz/last-run.ini"), "1\nvalues");
  host.Fail("ReplaceFile", error_number::kDiskFull);
  RunDemo(program);
  EXPECT_EQ(program.notices.Waiting().size(), 1U);
  EXPECT_THAT(host.transcript.back(), HasSubstr("run-Freq.pif")) << "it stops no run";
  RunDemo(program);
  VersionStore store(host);
  for (const char* const name : {"Tessel.hz/~pft-out.txt", "Tessel.hz/last-run.ini"}) {
    ASSERT_EQ(store.Of(host.Path(name)).size(), 1U) << name;
  }
}

}  // namespace
}  // namespace polefit::testing

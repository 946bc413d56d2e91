#include "app/start_up.h"

#include <gmock/gmock.h>

#include "app/file_commands.h"
#include "app/form_load.h"
#include "app/second_window.h"
#include "app/settings_file.h"
#include "base/error_of.h"
#include "exchange/import/new_problem.h"
#include "form/changes.h"
#include "form/fake_form.h"
#include "platform/registry.h"
#include "platform/scripted_host.h"
#include "responsefile/writer.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;

class StartUpTest : public ::testing::Test {
 protected:
  void Start() {
    Start_Path(program_);
    Start_INI(program_);
  }

  /// Loads the main form, whose start-up is complete whatever became of the last run; the error.
  int Load() {
    form_.SetText("LastFileName", "");
    form_.onChange = [this] { program_.document.DataChanged = 1; };
    const int error = ErrorOf([this] { LoadMainForm(program_); });
    const Files& files = program_.files;
    EXPECT_EQ(form_.Text("LastFileName"), "Start Up Values");
    EXPECT_EQ(files.currentFileName, "Start Up Values");
    EXPECT_THAT((std::vector{host_.CurrentFolder(), files.currentFolder, files.lastUsedFolder}),
                ::testing::Each(user_));
    EXPECT_EQ(program_.document.DataChanged, 0);
    return error;
  }

  ScriptedHost host_;
  FakeForm form_;
  Program program_{host_, form_};
  const std::string settings_ = host_.Path("Tessel.hz/Polefit.ini");
  const std::string lastRun_ = host_.Path("Tessel.hz/last-run.ini");
  const std::string user_ = host_.Path("Tessel.hz/User");
};

TEST_F(StartUpTest, StartPathCutsTheOwnFolderAtItsLastSeparator) {
  const std::pair<const char*, std::string> cases[] = {{"/opt/x/Tessel.hz", "/opt/x"},
                                                       {"/opt/x/y", "/opt/x"},
                                                       {"/opt/x", "/opt"},
                                                       {"/äöü/x", "/äöü"}};
  for (const auto& [own, base] : cases) {
    host_.ownFolder = own;
    program_.document.RunMode = "Demo";
    Start_Path(program_);
    EXPECT_EQ(program_.folders.BaseFolder, base);
    EXPECT_EQ(program_.folders.ProgramFolder, base + "/Tessel.hz");
    EXPECT_EQ(program_.document.RunMode, " ");
  }
  EXPECT_THAT(host_.transcript, ElementsAre());
}

TEST_F(StartUpTest, StartPathEndsTheProgramInAWrongFolder) {
  for (const char* const own : {"/äö/Tessel.hz", "/Tessel.hz", "Tessel.hz", ""}) {
    host_.ownFolder = own;
    host_.ReplyToBox(Reply::ok);
    EXPECT_THROW(Start_Path(program_), ProgramEnded) << own;
    EXPECT_THAT(host_.TakeTranscript(),
                ElementsAre("MessageBox 16 [In 'Start_Path' routine ... Exiting!] Missing "
                            "Polefit's base directory, \\CV-Tools; Can't proceed without it.  "
                            "Please re-install Polefit. -> ok",
                            "EndProgram"));
  }
}

TEST_F(StartUpTest, TheFirstStartMakesSettingsAndDataFolder) {
  Start();
  EXPECT_EQ(FileBytes(settings_),
            "Polefit\x99 Program                 03/03/04\r\n"
            "1             ! Increase if COMMAND still active and stops your run\r\n");
  EXPECT_THAT(host_.transcript,
              ElementsAre("OpenForWriting @/Tessel.hz/Polefit.ini", "CloseFile",
                          "MakeFolder @/Tessel.hz/User", "ChangeDrive @/Tessel.hz",
                          "ChangeFolder @/Tessel.hz/User"));
  EXPECT_EQ(program_.folders.LastRunPath, lastRun_);
  EXPECT_EQ(program_.windows.CMDialog1.initialFolder, user_);
  EXPECT_EQ(program_.Scratch, user_);
}

TEST_F(StartUpTest, TheSettingsFileGivesTheDelay) {
  const std::pair<const char*, float> cases[] = {
      {"h\r\n2.5  ! why\r\nold\r\n", 2.5F}, {"h\r\n.25\r\n", .25F}, {"h\nabc\n", 0.0F}};
  for (const auto& [bytes, delay] : cases) {
    WriteBytes(settings_, bytes);
    Start();
    EXPECT_EQ(program_.CommandDelay, delay) << bytes;
  }
  WriteSettingsFile(program_);
  EXPECT_THAT(FileBytes(settings_), ::testing::HasSubstr("\r\n0             ! Increase"));
}

TEST_F(StartUpTest, AnyErrorInStartINIEndsTheProgramAndKeepsTheLastRun) {
  for (const char* const operation : {"OpenForWriting", "MakeFolder", "ChangeFolder"}) {
    host_.Fail(operation, 57);
    host_.ReplyToBox(Reply::ok);
    EXPECT_THROW(Start(), ProgramEnded) << operation;
  }
  WriteBytes(settings_, "only a header\r\n");
  WriteBytes(lastRun_, "");
  host_.TakeTranscript();
  host_.ReplyToBox(Reply::ok);
  EXPECT_THROW(Start(), ProgramEnded);
  EXPECT_THAT(host_.transcript,
              ElementsAre("OpenForReading @/Tessel.hz/Polefit.ini", "AbandonFile",
                          "MessageBox 16 [In 'Start_INI' routine ...] Unexpected error # 62 "
                          "occured: \r\nPath =@/Tessel.hz\r\nInput past end of fileSuggest "
                          "re-installing Polefit. -> ok",
                          "EndProgram"));
  EXPECT_EQ(program_.files.lastUsedName, lastRun_);
  EXPECT_EQ(host_.LookUpFile(lastRun_), "last-run.ini");
}

TEST_F(StartUpTest, OnlyAWholePathFromTheRegistryIsTaken) {
  Start();
  EXPECT_EQ(LastFilePath(program_), "");
  const std::string key = "Software\\Corvane Systems\\Polefit";
  CreateRegKey(host_, kCurrentUser, key);
  const std::pair<std::string, const char*> cases[] = {
      {"data\\x", ""}, {"C:\\data", "C:\\data"}, {"C:x", ""}, {"", ""}, {"/data/x", "/data/x"}};
  for (const auto& [stored, expected] : cases) {
    SetRegValue(host_, kCurrentUser, key, "LastFilePath", registry_type::kString, stored);
    EXPECT_EQ(LastFilePath(program_), expected) << stored;
  }
  Start();
  EXPECT_EQ(program_.windows.CMDialog1.initialFolder, "/data/x");
}

TEST_F(StartUpTest, WithoutALastRunTheFormsOwnContentsBecomeTheRecord) {
  form_.selectedTab = Tab::run;
  EXPECT_EQ(Load(), 0);
  EXPECT_EQ(program_.document.record.Slot(slot::kTmin), form_.Text("tmin"));
  EXPECT_EQ(program_.document.record.solver[0], "");
  EXPECT_EQ(form_.selectedTab, Tab::start);
  EXPECT_EQ(form_.passData.RowCount(), 3);
  EXPECT_EQ(form_.delayData.RowCount(), 3);
}

TEST_F(StartUpTest, TheLastRunIsRestoredAsFarAsItCanBeShown) {
  const std::tuple<const char*, std::string, int> cases[] = {
      {"0 0 0", " 0", 0},
      {"1 2", " 0", error_number::kSubscriptOutOfRange},
      {"0 0 1", "40000", error_number::kOverflow}};
  for (const auto& [zeroCounts, points, error] : cases) {
    ResponseRecord record;
    record.Slot(slot::kTmin) = zeroCounts;
    record.Slot(slot::kZeroCounts) = zeroCounts;
    record.Slot(slot::kUseWeights) = "Y";
    record.Slot(slot::kNPoles) = "0 2";
    record.passband.Resize(1);
    record.delay.Resize(1);
    WriteResponseFile(host_, record, {host_.Path("Tessel.hz"), "last-run.ini"});
    std::string bytes = FileBytes(lastRun_);
    WriteBytes(lastRun_, bytes.replace(bytes.find(" 0\t\t! 23."), 2, points));
    if (points != " 0") host_.ReplyToBox(Reply::ok);
    EXPECT_EQ(Load(), error);
    EXPECT_EQ(form_.Text("tmin"), zeroCounts);
    EXPECT_GT(form_.passData.ColumnWidth(4), 0);
    EXPECT_FALSE(form_.IsEnabled("sigmaPoles")) << "rules apply to what could be shown";
  }
}

TEST_F(StartUpTest, ImprovedValuesComeWholeOrNotAtAllAndKeepTheNameForSaveAs) {
  Start();
  program_.files.currentFileName = "vna.1";
  form_.SetText("Gain", "typed");
  WriteBytes(lastRun_, "torn\r\nY\r\n");
  EXPECT_EQ(ThrownBy([this] { TakeImprovedValues(program_); }).path, lastRun_);
  ResponseRecord record = BuiltInAnswers();
  record.Slot(slot::kGain) = "better";
  WriteResponseFile(host_, record, {host_.Path("Tessel.hz"), "last-run.ini"});
  host_.ReplyToBox(Reply::cancel);
  TakeImprovedValues(program_);
  EXPECT_EQ(form_.Text("Gain"), "typed") << "it differed, and the question was not answered";
  NoteShown(program_);
  TakeImprovedValues(program_);
  EXPECT_EQ(form_.Text("Gain"), "better");
  host_.AnswerDialog("");
  FileSaveAs(program_);
  EXPECT_EQ(host_.lastDialog.fileName, "vna.*");
}

TEST_F(StartUpTest, ASecondWindowOnTheProgramFolderIsToldAndTheFirstIsNot) {
  Start();
  const auto first = ClaimProgramFolder(program_);
  EXPECT_TRUE(first != nullptr && program_.notices.Waiting().empty());
  EXPECT_EQ(ClaimProgramFolder(program_), nullptr);
  ASSERT_EQ(program_.notices.Waiting().size(), 1U);
  EXPECT_THAT(program_.notices.Waiting()[0].sentence, ::testing::StartsWith("Another window"));
  host_.Fail("TakeLock", 70);
  EXPECT_EQ(ClaimProgramFolder(program_), nullptr);
  EXPECT_EQ(program_.notices.Waiting().size(), 1U) << "a folder that cannot be claimed is no news";
}

}  // namespace
}  // namespace polefit::testing

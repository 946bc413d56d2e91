#include "app/start_up.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/form_load.h"
#include "app/settings_file.h"
#include "form/fake_form.h"
#include "platform/error_of.h"
#include "platform/registry.h"
#include "platform/scripted_host.h"
#include "responsefile/writer.h"

namespace polefit {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using testing::ErrorOf;
using testing::FileBytes;
using testing::WriteBytes;

class StartUpTest : public ::testing::Test {
 protected:
  std::string Settings() { return host_.Path("Tessel.hz/Polefit.ini"); }
  std::string LastRun() { return host_.Path("Tessel.hz/last-run.ini"); }

  void StorePath(const std::string& path) {
    const std::string key = "Software\\Corvane Systems\\Polefit";
    CreateRegKey(host_, kCurrentUser, key);
    SetRegValue(host_, kCurrentUser, key, "LastFilePath", registry_type::kString, path);
  }

  /// A record of the last run whose tmin answer is 5.
  void LeaveLastRun(const std::string& zeroCounts = "0 0 0") {
    ResponseRecord record;
    record.Slot(slot::kTmin) = "5";
    record.Slot(slot::kZeroCounts) = zeroCounts;
    record.passband.Resize(1);
    record.delay.Resize(1);
    WriteResponseFile(host_, record, {host_.Path("Tessel.hz"), "last-run.ini"});
    host_.TakeTranscript();
  }

  testing::ScriptedHost host_;
  testing::FakeForm form_;
  Program program_{host_, form_};
};

TEST_F(StartUpTest, StartPathCutsTheOwnFolderAtItsLastSeparator) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"/opt/tools/Tessel.hz", "/opt/tools", "/opt/tools/Tessel.hz"},
      {"/opt/tools/other", "/opt/tools", "/opt/tools/Tessel.hz"},
      {"/opt/bin", "/opt", "/opt/Tessel.hz"},
      {"/äöü/bin", "/äöü", "/äöü/Tessel.hz"}};
  for (const auto& [own, base, folder] : cases) {
    host_.ownFolder = own;
    program_.RunMode = "Demo";
    Start_Path(program_);
    EXPECT_EQ(program_.BaseFolder, base);
    EXPECT_EQ(program_.ProgramFolder, folder);
    EXPECT_EQ(program_.RunMode, " ");
  }
  EXPECT_TRUE(host_.transcript.empty());
}

TEST_F(StartUpTest, StartPathEndsTheProgramInAWrongFolder) {
  for (const char* const own : {"/ab/Tessel.hz", "/Tessel.hz", "Tessel.hz", ""}) {
    host_.ownFolder = own;
    host_.AnswerBox(Answer::ok);
    EXPECT_THROW(Start_Path(program_), ProgramEnded) << own;
    EXPECT_THAT(host_.TakeTranscript(),
                ElementsAre("MessageBox 16 [In 'Start_Path' routine ... Exiting!] Missing "
                            "Polefit's base directory, \\CV-Tools; Can't proceed without it.  "
                            "Please re-install Polefit. -> ok",
                            "EndProgram"));
  }
}

TEST_F(StartUpTest, TheFirstStartMakesSettingsAndDataFolder) {
  Start_Path(program_);
  Start_INI(program_);
  EXPECT_EQ(FileBytes(Settings()),
            "Polefit\x99 Program                 03/03/04\r\n"
            "1             ! Increase if COMMAND still active and stops your run\r\n");
  EXPECT_THAT(host_.transcript,
              ElementsAre("OpenForWriting @/Tessel.hz/Polefit.ini", "CloseFile",
                          "MakeFolder @/Tessel.hz/User", "ChangeDrive @/Tessel.hz",
                          "ChangeFolder @/Tessel.hz/User"));
  EXPECT_EQ(program_.LastRunPath, LastRun());
  EXPECT_EQ(program_.CMDialog1.initialFolder, host_.Path("Tessel.hz/User"));
  EXPECT_EQ(program_.Scratch, host_.Path("Tessel.hz/User"));
}

TEST_F(StartUpTest, TheSettingsFileGivesTheDelay) {
  const std::pair<const char*, float> cases[] = {
      {"h\r\n2.5  ! why\r\nold\r\n", 2.5F}, {"h\r\n.25\r\n", .25F}, {"h\nabc\n", 0.0F}};
  for (const auto& [bytes, delay] : cases) {
    WriteBytes(Settings(), bytes);
    Start_Path(program_);
    Start_INI(program_);
    EXPECT_EQ(program_.CommandDelay, delay) << bytes;
  }
  WriteSettingsFile(program_);
  EXPECT_THAT(FileBytes(Settings()), ::testing::HasSubstr("\r\n0             ! Increase"));
}

TEST_F(StartUpTest, ABrokenSettingsFileEndsTheProgram) {
  Start_Path(program_);
  WriteBytes(Settings(), "only a header\r\n");
  WriteBytes(LastRun(), "");
  host_.AnswerBox(Answer::ok);
  EXPECT_THROW(Start_INI(program_), ProgramEnded);
  EXPECT_THAT(host_.transcript,
              ElementsAre("OpenForReading @/Tessel.hz/Polefit.ini", "AbandonFile",
                          "MessageBox 16 [In 'Start_INI' routine ...] Unexpected error # 62 "
                          "occured: \r\nPath =@/Tessel.hz\r\nInput past end of fileSuggest "
                          "re-installing Polefit. -> ok",
                          "EndProgram"));
  EXPECT_EQ(program_.files.lastUsedName, LastRun());
  EXPECT_FALSE(host_.LookUpFile(LastRun()).empty());
}

TEST_F(StartUpTest, AnyDeviceErrorInStartINIEndsTheProgram) {
  for (const char* const operation : {"OpenForWriting", "MakeFolder", "ChangeFolder"}) {
    Start_Path(program_);
    host_.Fail(operation, 57);
    host_.AnswerBox(Answer::ok);
    EXPECT_THROW(Start_INI(program_), ProgramEnded) << operation;
  }
}

TEST_F(StartUpTest, OnlyAWholePathFromTheRegistryIsTaken) {
  Start_Path(program_);
  Start_INI(program_);
  EXPECT_EQ(LastFilePath(program_), "");
  const std::pair<const char*, const char*> cases[] = {
      {"data\\x", ""}, {"C:\\data", "C:\\data"}, {"/data", "/data"}, {"C:x", ""}, {"", ""}};
  for (const auto& [stored, expected] : cases) {
    StorePath(stored);
    EXPECT_EQ(LastFilePath(program_), expected) << stored;
  }
  StorePath("/data/x");
  Start_INI(program_);
  EXPECT_EQ(program_.CMDialog1.initialFolder, "/data/x");
}

TEST_F(StartUpTest, WithoutALastRunTheFormsOwnContentsBecomeTheRecord) {
  program_.DataChanged = 1;
  form_.selectedTab = Tab::run;
  LoadMainForm(program_);
  EXPECT_EQ(program_.record.Slot(slot::kTmin), form_.Text("tmin"));
  EXPECT_EQ(program_.record.solver[0], "");
  EXPECT_EQ(program_.files.currentFileName, "Start Up Values");
  EXPECT_EQ(program_.files.currentFolder, host_.Path("Tessel.hz/User"));
  EXPECT_EQ(program_.files.lastUsedFolder, host_.Path("Tessel.hz/User"));
  EXPECT_EQ(form_.Text("LastFileName"), "Start Up Values");
  EXPECT_EQ(form_.selectedTab, Tab::start);
  EXPECT_EQ(form_.passData.RowCount(), 3);
  EXPECT_EQ(form_.delayData.RowCount(), 3);
  EXPECT_EQ(program_.DataChanged, 0);
}

TEST_F(StartUpTest, TheLastRunIsRestored) {
  LeaveLastRun();
  form_.onChange = [this] { program_.DataChanged = 1; };
  LoadMainForm(program_);
  EXPECT_EQ(form_.Text("tmin"), "5");
  EXPECT_EQ(form_.Text("LastFileName"), "Start Up Values");
  EXPECT_EQ(program_.files.currentFileName, "Start Up Values");
  EXPECT_EQ(program_.DataChanged, 0);
  EXPECT_EQ(host_.CurrentFolder(), host_.Path("Tessel.hz/User"));
}

TEST_F(StartUpTest, StartUpIsCompleteWhenTheLastRunCannotBeShown) {
  LeaveLastRun("1 2");
  EXPECT_EQ(ErrorOf([&] { LoadMainForm(program_); }), error_number::kSubscriptOutOfRange);
  EXPECT_EQ(form_.Text("tmin"), "5");
  EXPECT_EQ(form_.Text("LastFileName"), "Start Up Values");
  EXPECT_EQ(program_.files.currentFolder, host_.Path("Tessel.hz/User"));
  EXPECT_EQ(program_.DataChanged, 0);
}

TEST_F(StartUpTest, ATruncatedLastRunIsReportedAndStartUpGoesOn) {
  WriteBytes(LastRun(), "run1.txt\r\nN\r\n");
  host_.AnswerBox(Answer::ok);
  LoadMainForm(program_);
  EXPECT_THAT(host_.transcript,
              Contains("MessageBox 16 [In 'FileReadMe' routine ...] Unexpected error # 62 occured: "
                       "Input past end of file -> ok"));
  EXPECT_EQ(form_.Text("LastFileName"), "Start Up Values");
}

}  // namespace
}  // namespace polefit

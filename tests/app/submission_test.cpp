#include "app/submission.h"

#include <gmock/gmock.h>

#include "app/solver_start.h"
#include "form/scripted_program.h"

namespace polefit::testing {
namespace {

using ::testing::EndsWith;

const std::string kUnsaved =
    "MessageBox 33 [Data -not- saved!] Okay to save '@/Tessel.hz/User/Start Up Values' now? -> ";
const std::string kChanged = "MessageBox 35 [Data in form has changed!] Save current data? -> ";
const std::string kSaveAs = "ShowSave [Save Response Input File As ...] ";

class SubmissionTest : public ::testing::Test, protected ScriptedProgram {
 protected:
  SubmissionTest() {
    WriteBytes(host.Path("DOSstart.cvx"), "start script");
    program.document.RunMode = "*";
  }

  /// What happened since the last time, a line for each effect.
  std::string Effects() {
    std::string lines;
    for (const std::string& effect : host.TakeTranscript()) lines += effect + "\n";
    return lines;
  }
  std::string Submit() {
    SubmitRun(program);
    return Effects();
  }

  /// The effects of writing the file `name` of the "User" folder, and of starting the solver on it.
  std::string Written(const std::string& name) {
    return "OpenForWriting @/Tessel.hz/User/" + name + "\nCloseFile\n";
  }
  std::string Started(const std::string& name) {
    return "OpenForWriting @/re-start.reg\nCloseFile\nStartProgram 0 regedit /s @/re-start.reg\n"
           "StartProgram 2 COMMAND.COM /C COPY @/DOSstart.cvx @/DOSstart.tmp\n"
           "StartProgram 1 @/Tessel.hz/run-Freq.pif " +
           name + " @/Tessel.hz/User @ " + host.Root().substr(0, 2) + "\n";
  }

  void SaveAsCurrent(const std::string& name) {
    SetCurrentFile(host, files, user + "/" + name);
    WriteBytes(name, "former");
  }

  Files& files = program.files;
};

TEST_F(SubmissionTest, ASavedFileIsWrittenAgainAndRun) {
  SaveAsCurrent("Run1.TXT");
  EXPECT_EQ(Submit(), Written("Run1.TXT") + Started("Run1.TXT"));
  EXPECT_EQ(files.CurrentPath(), user + "/Run1.TXT");
  EXPECT_NE(FileBytes("Run1.TXT"), "former");
}

TEST_F(SubmissionTest, ANeverSavedFormIsSavedUnderANameOrNotRun) {
  host.ReplyToBox(Reply::cancel, Reply::ok, Reply::ok);
  EXPECT_EQ(Submit(), kUnsaved + "cancel\n");
  host.AnswerDialog("");
  EXPECT_EQ(Submit(), kUnsaved + "ok\n" + kSaveAs + "*.* -> \n");
  EXPECT_EQ(files.currentFileName, "Start Up Values");
  host.AnswerDialog(user + "/run2.txt");
  EXPECT_EQ(Submit(), kUnsaved + "ok\n" + kSaveAs + "*.* -> @/Tessel.hz/User/run2.txt\n" +
                          Written("run2.txt") + Written("run2.txt") + Started("run2.txt"));
}

TEST_F(SubmissionTest, ChangedDataGoToAnotherFileOrIntoTheOldOneAllTheSame) {
  SaveAsCurrent("run1.txt");
  program.document.DataChanged = 1;
  host.ReplyToBox(Reply::cancel, Reply::no, Reply::yes);
  EXPECT_EQ(Submit(), kChanged + "cancel\n");
  EXPECT_EQ(Submit(), kChanged + "no\n" + Written("run1.txt") + Started("run1.txt"));
  host.AnswerDialog(user + "/run3.txt");
  EXPECT_EQ(Submit(), kChanged + "yes\n" + kSaveAs + "run1.* -> @/Tessel.hz/User/run3.txt\n" +
                          Written("run3.txt") + Written("run3.txt") + Started("run3.txt"));
}

TEST_F(SubmissionTest, InModeDemoTheLastUsedFileIsRunUnwritten) {
  WriteBytes("Ex-Yzero.101", "example");
  program.document.RunMode = "Demo";
  files.lastUsedName = "Ex-Yzero.101";
  files.currentFolder = files.lastUsedFolder = host.Root();
  host.ChangeFolder(host.Root());
  host.TakeTranscript();
  EXPECT_EQ(Submit(),
            "ChangeDrive @/Tessel.hz\nChangeFolder @/Tessel.hz/User\n" + Started("Ex-Yzero.101"));
  EXPECT_EQ(FileBytes("Ex-Yzero.101"), "example");
  host.ReplyToBox(Reply::no, Reply::ok);
  files.lastUsedName = "";
  EXPECT_THAT(Submit(), EndsWith("MessageBox 52 [Filename is null or blank!] Please save file with "
                                 "any valid name and re-run. -> no\n"));
  files.lastUsedName = "none";
  EXPECT_THAT(Submit(), EndsWith("MessageBox 448 [Please save file and re-run.] 'none' is "
                                 "non-existent! -> ok\n"));
}

TEST_F(SubmissionTest, APlatformThatCannotRunTheSolverIsRefused) {
  // Each version has its minor part in the high byte.
  const std::tuple<unsigned, std::string, bool> cases[] = {
      {0x0A04, "4.10", true},  {0x0B04, "4.11", false},  {0x5A04, "4.90", false},
      {0x0206, "6.02", false}, {0x000A, "10.00", false}, {0x6F03, "4.11", false}};
  SaveAsCurrent("run1.txt");
  for (const auto& [version, text, passes] : cases) {
    host.version = version | 0x12340000U;
    if (!passes) host.ReplyToBox(Reply::ok);
    RunSolver(program);
    EXPECT_EQ(Effects(), passes ? Started("run1.txt")
                                : "MessageBox 48 [GetWindowsVer = " + text +
                                      "] Sorry, requires Windows 95/98 to run DOS portion of "
                                      "program! -> ok\n");
  }
}

TEST_F(SubmissionTest, AMissingStartScriptIsReportedAndNothingIsWritten) {
  SaveAsCurrent("run1.txt");
  host.ReplyToBox(Reply::ok, Reply::ok);
  CopyWithCommand(host, host.Path("none"), host.Path("x"));
  EXPECT_EQ(Effects(), "MessageBox 0 [Polefit] \"@/none\" is not a valid file name. -> ok\n");
  host.DeleteFile(host.Path("DOSstart.cvx"));
  host.TakeTranscript();
  RunSolver(program);
  EXPECT_EQ(Effects(),
            "MessageBox 48 [A Polefit File is missing!] Re-Install Polefit Program; if this "
            "continues please contact us.  Try running a Demo and see if this error occurs. -> "
            "ok\n");
}

TEST_F(SubmissionTest, TheRestartScriptIsWrittenToTheByte) {
  EXPECT_TRUE(WriteRestartEntry(program, "pfit"));
  EXPECT_EQ(FileBytes(host.Path("re-start.reg")),
            "REGEDIT4\r\n\r\n"
            "[HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce]\r\n"
            "\"Polefit startup\"=\"c:\\\\program files\\\\cv-Tools\\\\Tessel.hz\\\\pfit.exe\"\r\n");
}

TEST_F(SubmissionTest, AnErrorInTheRestartEntryIsQuietAndTheRunGoesOn) {
  SaveAsCurrent("run1.txt");
  for (const char* const operation : {"OpenForWriting", "StartProgram", "CloseFile"}) {
    host.Fail(operation, error_number::kDiskFull, 1, 2);
    EXPECT_FALSE(WriteRestartEntry(program, "pfit")) << operation;
    RunSolver(program);
    EXPECT_THAT(Effects(), ::testing::HasSubstr("run-Freq.pif run1.txt")) << operation;
  }
  EXPECT_TRUE(WriteRestartEntry(program, "pfit"));
}

}  // namespace
}  // namespace polefit::testing

#include "app/submission.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/solver_start.h"
#include "form/scripted_program.h"
#include "platform/error_of.h"

namespace polefit {
namespace {

using ::testing::ElementsAre;
using testing::ErrorOf;
using testing::FileBytes;
using testing::WriteBytes;

using Effects = std::vector<std::string>;

class SubmissionTest : public ::testing::Test {
 protected:
  SubmissionTest() {
    WriteBytes(host_.Path("DOSstart.cvx"), "start script");
    program_.RunMode = "*";
  }

  /// What the start of the solver with `name` in the "User" folder does, after `before`.
  Effects AndStart(Effects before, const std::string& name) {
    const std::string drive = host_.Root().substr(0, 2);
    for (const std::string& effect :
         {std::string("OpenForWriting @/re-start.reg"), std::string("CloseFile"),
          std::string("StartProgram 0 regedit /s @/re-start.reg"),
          std::string("StartProgram 2 COMMAND.COM /C COPY @/DOSstart.cvx @/DOSstart.tmp"),
          "StartProgram 1 @/Tessel.hz/run-Freq.pif " + name + " @/Tessel.hz/User @ " + drive}) {
      before.push_back(effect);
    }
    return before;
  }

  void SaveAsCurrent(const std::string& name) {
    SetCurrentFile(host_, program_.files, scripted_.user + "/" + name);
    WriteBytes(scripted_.user + "/" + name, "former");
  }

  testing::ScriptedProgram scripted_;
  testing::ScriptedHost& host_ = scripted_.host;
  Program& program_ = scripted_.program;
  FileState& files_ = program_.files;
};

TEST_F(SubmissionTest, ASavedFileIsWrittenAgainAndRun) {
  SaveAsCurrent("Run1.TXT");
  SubmitRun(program_);
  EXPECT_EQ(host_.transcript,
            AndStart({"OpenForWriting @/Tessel.hz/User/Run1.TXT", "CloseFile"}, "Run1.TXT"));
  EXPECT_EQ(files_.currentFileName, "Run1.TXT");
  EXPECT_EQ(files_.currentFolder, scripted_.user);
  EXPECT_NE(FileBytes(scripted_.user + "/Run1.TXT"), "former");
}

TEST_F(SubmissionTest, ANeverSavedFormIsSavedUnderANameFirst) {
  host_.AnswerBox(Answer::ok);
  host_.AnswerDialog(scripted_.user + "/run2.txt");
  SubmitRun(program_);
  EXPECT_EQ(host_.transcript,
            AndStart({"MessageBox 33 [Data -not- saved!] Okay to save '@/Tessel.hz/User/Start Up "
                      "Values' now? -> ok",
                      "ShowSave [Save Response Input File As ...] *.* -> @/Tessel.hz/User/run2.txt",
                      "OpenForWriting @/Tessel.hz/User/run2.txt", "CloseFile",
                      "OpenForWriting @/Tessel.hz/User/run2.txt", "CloseFile"},
                     "run2.txt"));
}

TEST_F(SubmissionTest, NothingRunsAfterACancelledQuestion) {
  host_.AnswerBox(Answer::cancel);
  SubmitRun(program_);
  EXPECT_EQ(host_.TakeTranscript().size(), 1U);
  host_.AnswerBox(Answer::ok);
  host_.AnswerDialog("");
  SubmitRun(program_);
  EXPECT_EQ(host_.TakeTranscript().size(), 2U);
  EXPECT_EQ(files_.currentFileName, "Start Up Values");
  SaveAsCurrent("run1.txt");
  program_.DataChanged = 1;
  host_.AnswerBox(Answer::cancel);
  SubmitRun(program_);
  EXPECT_EQ(host_.TakeTranscript().size(), 1U);
}

TEST_F(SubmissionTest, ChangedDataGoToAnotherFileOrIntoTheOldOneAllTheSame) {
  SaveAsCurrent("run1.txt");
  program_.DataChanged = 1;
  const std::string question = "MessageBox 35 [Data in form has changed!] Save current data? -> ";
  host_.AnswerBox(Answer::no);
  SubmitRun(program_);
  EXPECT_EQ(host_.TakeTranscript(),
            AndStart({question + "no", "OpenForWriting @/Tessel.hz/User/run1.txt", "CloseFile"},
                     "run1.txt"));
  host_.AnswerBox(Answer::yes);
  host_.AnswerDialog(scripted_.user + "/run3.txt");
  SubmitRun(program_);
  EXPECT_EQ(host_.TakeTranscript(),
            AndStart({question + "yes",
                      "ShowSave [Save Response Input File As ...] run1.* -> "
                      "@/Tessel.hz/User/run3.txt",
                      "OpenForWriting @/Tessel.hz/User/run3.txt", "CloseFile",
                      "OpenForWriting @/Tessel.hz/User/run3.txt", "CloseFile"},
                     "run3.txt"));
}

TEST_F(SubmissionTest, InModeDemoTheLastUsedFileIsRunUnwritten) {
  WriteBytes(scripted_.user + "/Ex-Yzero.101", "example");
  program_.RunMode = "Demo";
  files_.lastUsedName = "Ex-Yzero.101";
  host_.ChangeFolder(host_.Root());
  host_.TakeTranscript();
  SubmitRun(program_);
  EXPECT_EQ(host_.TakeTranscript(),
            AndStart({"ChangeDrive @/Tessel.hz", "ChangeFolder @/Tessel.hz/User"}, "Ex-Yzero.101"));
  EXPECT_EQ(FileBytes("Ex-Yzero.101"), "example");
  files_.lastUsedName = "";
  host_.AnswerBox(Answer::no);
  SubmitRun(program_);
  EXPECT_EQ(host_.TakeTranscript().back(),
            "MessageBox 52 [Filename is null or blank!] Please save file with any valid name and "
            "re-run. -> no");
  files_.lastUsedName = "none";
  host_.AnswerBox(Answer::ok);
  SubmitRun(program_);
  EXPECT_EQ(host_.TakeTranscript().back(),
            "MessageBox 448 [Please save file and re-run.] 'none' is non-existent! -> ok");
}

TEST_F(SubmissionTest, APlatformThatCannotRunTheSolverIsRefused) {
  const std::tuple<unsigned, unsigned, const char*, bool> cases[] = {
      {4, 0, "4.00", true},    {4, 10, "4.10", true},  {4, 11, "4.11", false},
      {4, 90, "4.90", false},  {5, 1, "5.01", false},  {6, 2, "6.02", false},
      {10, 0, "10.00", false}, {3, 111, "4.11", false}};
  SaveAsCurrent("run1.txt");
  for (const auto& [major, minor, text, passes] : cases) {
    host_.version = major | minor << 8U | 0x12340000U;
    EXPECT_EQ(GetWindowsVer(host_), text);
    if (!passes) host_.AnswerBox(Answer::ok);
    RunSolver(program_);
    const Effects effects = host_.TakeTranscript();
    if (passes) {
      EXPECT_EQ(effects, AndStart({}, "run1.txt"));
    } else {
      EXPECT_THAT(effects,
                  ElementsAre("MessageBox 48 [GetWindowsVer = " + std::string(text) +
                              "] Sorry, requires Windows 95/98 to run DOS portion of program! -> "
                              "ok"));
    }
  }
}

TEST_F(SubmissionTest, AMissingStartScriptIsReportedAndNothingIsWritten) {
  SaveAsCurrent("run1.txt");
  host_.DeleteFile(host_.Path("DOSstart.cvx"));
  host_.TakeTranscript();
  host_.AnswerBox(Answer::ok);
  RunSolver(program_);
  EXPECT_THAT(host_.transcript,
              ElementsAre("MessageBox 48 [A Polefit File is missing!] Re-Install Polefit Program; "
                          "if this continues please contact us.  Try running a Demo and see if "
                          "this error occurs. -> ok"));
}

TEST_F(SubmissionTest, TheRestartScriptIsWrittenToTheByte) {
  EXPECT_TRUE(WriteRestartEntry(program_, "pfit"));
  EXPECT_EQ(FileBytes(host_.Path("re-start.reg")),
            "REGEDIT4\r\n\r\n"
            "[HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce]\r\n"
            "\"Polefit startup\"=\"c:\\\\program files\\\\cv-Tools\\\\Tessel.hz\\\\pfit.exe\"\r\n");
}

TEST_F(SubmissionTest, AnErrorInTheRestartEntryIsQuietAndTheRunGoesOn) {
  for (const char* const operation : {"OpenForWriting", "StartProgram", "CloseFile"}) {
    host_.Fail(operation, error_number::kDiskFull);
    EXPECT_FALSE(WriteRestartEntry(program_, "pfit")) << operation;
  }
  SaveAsCurrent("run1.txt");
  host_.Fail("OpenForWriting", error_number::kDiskFull);
  host_.TakeTranscript();
  RunSolver(program_);
  EXPECT_THAT(host_.transcript.back(), ::testing::HasSubstr("run-Freq.pif run1.txt"));
}

TEST_F(SubmissionTest, ACopyWithoutItsSourceIsRefused) {
  host_.AnswerBox(Answer::ok);
  CopyWithCommand(host_, host_.Path("none"), host_.Path("x"));
  EXPECT_THAT(host_.transcript,
              ElementsAre("MessageBox 0 [Polefit] \"@/none\" is not a valid file name. -> ok"));
}

TEST_F(SubmissionTest, ASolverThatCannotBeStartedLeavesTheSavedFile) {
  SaveAsCurrent("run1.txt");
  host_.Fail("StartProgram", error_number::kFileNotFound, 3);
  EXPECT_EQ(ErrorOf([&] { SubmitRun(program_); }), error_number::kFileNotFound);
  EXPECT_NE(FileBytes(scripted_.user + "/run1.txt"), "former");
}

}  // namespace
}  // namespace polefit

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <chrono>

#include "demos/ui/installed_program.h"
#include "platform/console_host.h"
#include "platform/detached_process.h"
#include "responsefile/writer.h"

namespace polefit {
namespace {

using testing::FileBytes;
using ::testing::HasSubstr;
using testing::InstalledProgram;
using ::testing::StartsWith;
using testing::WriteBytes;

void MakeRunFile(const std::string& folder, const std::string& name) {
  ResponseRecord record;
  record.passband.Resize(1);
  record.delay.Resize(1);
  ConsoleHost writing;
  WriteResponseFile(writing, record, {folder, name});
}

/// The real windows with solvers that behave in every way a solver can.
class StandInTest : public InstalledProgram {
 protected:
  void Submit(const std::string& script) {
    InstallSolver(script);
    MakeRunFile(Installed("User"), "run1.txt");
    Start(Installed("User/run1.txt"));
    Choose("mnuFileSubmit");
  }
  static std::string Output() {
    return In<QPlainTextEdit>("frmRun", "txtOutput")->toPlainText().toStdString();
  }
  static bool WaitForOutput(const std::string& text) {
    return QTest::qWaitFor([&] { return Output().find(text) != std::string::npos; }, 5000);
  }
  static bool Offers(const char* button) { return In<QPushButton>("frmRun", button)->isEnabled(); }
};

TEST_F(StandInTest, EveryEndGetsItsVerdictAndItsButtons) {
  struct Case {
    const char* script;
    const char* verdict;
    bool report;
    bool improved;
  };
  const Case cases[] = {
      {"echo r > '~pft-out.txt'; echo v > last-run.ini; echo 'pfit: converged (1 of 1 starts "
       "agree)'",
       "Converged (1 of 1 starts agree)", true, true},
      {"echo r > '~pft-out.txt'; echo v > last-run.ini; echo 'pfit: stopped at EVALMAX; best point "
       "found is given'",
       "Limit reached: stopped at EVALMAX; best point found is given", true, true},
      {"echo r > '~pft-out.txt'; echo 'pfit: Question 5 (Freq Norm): the answer is empty'; exit 2",
       "Failed: Question 5 (Freq Norm): the answer is empty", true, false},
      {"kill -SEGV $$", "Ended without a report: the solver broke off.", false, false},
      {"echo half > '~pft-out.txt'; echo 'start 1'; kill -KILL $$",
       "Failed: the solver broke off, and its report may not be complete.", true, false},
      {"echo 'pfit: cannot write'; exit 4", "Failed: cannot write  No report was written.", false,
       false},
  };
  for (const Case& expected : cases) {
    for (const char* const left : {"~pft-out.txt", "last-run.ini"}) {
      std::filesystem::remove(Installed(left));
    }
    Submit(expected.script);
    EXPECT_EQ(Verdict(), expected.verdict);
    EXPECT_EQ(Offers("cmdReport"), expected.report) << expected.verdict;
    EXPECT_EQ(Offers("cmdImproved"), expected.improved) << expected.verdict;
    EXPECT_FALSE(Offers("cmdStop"));
  }
}

TEST_F(StandInTest, AnOldReportIsNotTakenForTheRunsOwn) {
  WriteBytes(Installed("~pft-out.txt"), "old");
  WriteBytes(Installed("last-run.ini"), "");
  const auto earlier = std::filesystem::file_time_type::clock::now() - std::chrono::minutes(1);
  std::filesystem::last_write_time(Installed("~pft-out.txt"), earlier);
  std::filesystem::last_write_time(Installed("last-run.ini"), earlier);
  answers_.Press(QMessageBox::Ok);
  Submit("exit 9");
  EXPECT_THAT(Verdict(), StartsWith("Ended without a report"));
  EXPECT_FALSE(Offers("cmdReport"));
  EXPECT_FALSE(Offers("cmdImproved"));
}

TEST_F(StandInTest, ASlowRunShowsItsOutputAndItsProgressAsTheyCome) {
  ::mkfifo(Installed("gate").c_str(), 0600);
  Submit("printf 'start 1  120 '; sleep .2; printf 'of 2000  rho 1\\n'; read line < gate");
  ASSERT_TRUE(WaitForOutput("120 of 2000"));
  auto* const progress = In<QProgressBar>("frmRun", "progress");
  EXPECT_EQ(progress->value(), 120);
  EXPECT_EQ(progress->maximum(), 2000);
  EXPECT_THAT(TextOf("frmRun", "lblCommand"), HasSubstr("/Tessel.hz/pfit run1.txt "));
  EXPECT_THAT(TextOf("frmRun", "lblElapsed"), StartsWith("Elapsed 0:0"));
  EXPECT_TRUE(Offers("cmdStop"));
  SetText("tmin", "usable");
  EXPECT_EQ(TextOf("frmMain", "tmin"), "usable");
  Click("frmRun", "cmdStop");
  EXPECT_THAT(Verdict(), StartsWith("Stopped by you"));
}

TEST_F(StandInTest, StopLetsTheSolverWriteItsBestValues) {
  Submit(
      "trap 'echo v > last-run.ini; echo r > \"~pft-out.txt\"; echo \"pfit: stopped on request; "
      "best point found is given\"; exit 1' TERM\necho on\nwhile :; do sleep .05; done");
  ASSERT_TRUE(WaitForOutput("on"));
  Click("frmRun", "cmdStop");
  EXPECT_EQ(Verdict(), "Stopped by you; the best values so far are kept.");
  EXPECT_TRUE(Offers("cmdImproved"));
}

TEST_F(StandInTest, ASolverThatIgnoresTheSignalIsEndedAtOnceWithItsChildren) {
  Submit("trap '' TERM\nsleep 60 &\necho \"child $!\"\nwait\nwhile :; do sleep 60; done");
  ASSERT_TRUE(WaitForOutput("child "));
  const long child = std::stol(Output().substr(Output().find("child ") + 6));
  Click("frmRun", "cmdStop");
  QTest::qWait(300);
  EXPECT_EQ(TextOf("frmRun", "lblVerdict"), "");
  Click("frmRun", "cmdStop");
  EXPECT_EQ(Verdict(), "Stopped by you, before the solver could write its results.");
  EXPECT_TRUE(QTest::qWaitFor([child] { return !StartOfProcess(child); }));
}

TEST_F(StandInTest, SingleByteOutputIsShownAsItsLetters) {
  Submit("printf 'Gr\\374n \\231\\r\\nf\\303\\274r\\n'; echo 'pfit: converged'");
  Verdict();
  EXPECT_THAT(Output(), HasSubstr("Grün ™\nfür\n"));
}

TEST_F(StandInTest, ASecondRunIsRefusedAndTheFirstGoesOn) {
  Submit("echo first; exec sleep 60");
  ASSERT_TRUE(WaitForOutput("first"));
  Window("frmRun")->close();
  const std::string before = FileBytes(Installed("User/run1.txt"));
  SetText("tmin", "changed");
  answers_.Press(QMessageBox::Ok);
  Choose("mnuFileSubmit");
  EXPECT_THAT(answers_.said.back(), StartsWith("A run is going on|The run of 'run1.txt' is still"));
  EXPECT_EQ(FileBytes(Installed("User/run1.txt")), before);
  ASSERT_TRUE(WaitForOutput("first"));
  Click("frmRun", "cmdStop");
  Verdict();
}

TEST_F(StandInTest, ALaterStartFindsTheRunThatIsOn) {
  Submit("echo still here; exec sleep 60");
  ASSERT_TRUE(WaitForOutput("still here"));
  Start();
  ASSERT_TRUE(WaitForOutput("still here"));
  EXPECT_THAT(TextOf("frmRun", "lblDataFile"), "run1.txt");
  Click("frmRun", "cmdStop");
  EXPECT_THAT(Verdict(), StartsWith("Stopped by you"));
  Start();
  EXPECT_EQ(Window("frmRun"), nullptr);
}

TEST_F(StandInTest, AMissingSolverIsNamedAndTheSavedFileStays) {
  MakeRunFile(Installed("User"), "run1.txt");
  Start(Installed("User/run1.txt"));
  SetText("tmin", "kept");
  for (const bool there : {false, true}) {
    if (there) WriteBytes(Installed("pfit"), "not executable");
    answers_.Press(QMessageBox::No);
    answers_.Press(QMessageBox::Ok);
    Choose("mnuFileSubmit");
    EXPECT_THAT(answers_.said.back(), HasSubstr(": " + Installed("pfit")));
    EXPECT_EQ(FileBytes(root_.File("config/autostart/polefit-restart.desktop")), "");
  }
  EXPECT_THAT(FileBytes(Installed("User/run1.txt")), HasSubstr("kept\t\t! 1a."));
  EXPECT_EQ(Window("frmRun"), nullptr);
}

class FolderNamesTest : public InstalledProgram, public ::testing::WithParamInterface<const char*> {
 protected:
  FolderNamesTest() : InstalledProgram(GetParam()) {}
};

TEST_P(FolderNamesTest, ARunGetsItsFourWordsWhole) {
  InstallSolver(
      "for word; do echo \"[$word]\"; done > words; test -r \"$read\" && echo 'pfit: "
      "converged'");
  const std::string name = std::string(GetParam()) + ".Txt";
  MakeRunFile(Installed("User"), name);
  Start(Installed("User/" + name));
  Choose("mnuFileSubmit");
  EXPECT_THAT(Verdict(), StartsWith("Converged"));
  EXPECT_EQ(FileBytes(Installed("words")), "[" + name + "]\n[" + Installed("User") + "]\n[" +
                                               base_ + "]\n[" + base_.substr(0, 2) + "]\n");
}

INSTANTIATE_TEST_SUITE_P(Names, FolderNamesTest,
                         ::testing::Values("two  words", "Program FILES", "Größe Ü", "it's \"it\"",
                                           "wow! $HOME %f", "-dash", "a;b&c|d"));

}  // namespace
}  // namespace polefit

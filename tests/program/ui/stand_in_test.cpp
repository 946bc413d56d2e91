#include <gmock/gmock.h>

#include <QPlainTextEdit>
#include <QProgressBar>
#include <atomic>
#include <thread>

#include "platform/linux/detached_process.h"
#include "program/ui/installed_program.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// The real windows with solvers that behave in every way a solver can. Each wait is for something
/// that must come; a solver that sleeps is one that goes on until it is ended. Judging itself is
/// tested without processes; what only real ones show is left here: output that grows, signals,
/// groups, and windows that follow.
struct StandInTest : InstalledProgram {
  /// Runs a solver and waits until its output holds the text.
  void Submit(const std::string& script, const char* text = "") {
    InstallSolver(script);
    Start(MakeFile("run1.txt"));
    Choose("mnuFileSubmit");
    WaitForOutput(text);
  }
  static std::string Output() {
    return The<QPlainTextEdit>("txtOutput").toPlainText().toStdString();
  }
  static void WaitForOutput(const char* text) {
    const auto isThere = [text] { return Output().find(text) != std::string::npos; };
    ASSERT_TRUE(Comes(isThere)) << text;
  }
  static std::string StopAndVerdict() {
    Click("cmdStop");
    return Verdict();
  }
  /// The buttons of the run's window that can be pressed.
  static std::string Offered() {
    QStringList names;
    for (const char* const name : {"cmdStop", "cmdReport", "cmdImproved"}) {
      if (The(name).isEnabled()) names << name;
    }
    return names.join(" ").toStdString();
  }
};

TEST_F(StandInTest, EveryEndGetsItsVerdictAndItsButtonsAndNoFormerResultIsTakenForItsOwn) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"report; values; say 'converged (1 of 1 starts agree)'",
       "Good: as far as the solver says, with no figures.", "cmdReport cmdImproved"},
      {"report; values; say 'stopped at EVALMAX; best point found is given'; exit 1",
       "Stopped: at a limit; the best point found is given.", "cmdReport cmdImproved"},
      {"report; say 'Question 5 (Freq Norm): the answer is empty'; exit 2",
       "Failed: Question 5 (Freq Norm): the answer is empty.", "cmdReport"},
      {"kill -SEGV $$", "Failed: the solver broke off without a report.", ""},
      {"report; echo 'start 1'; kill -KILL $$",
       "Failed: the solver broke off, and its report may not be complete.", "cmdReport"},
      {"say 'cannot write'; exit 4", "Failed: cannot write.  No report was written.", ""}};
  Start(MakeFile("run1.txt"));
  for (const auto& [script, verdict, buttons] : cases) {
    const auto aMinuteAgo = std::filesystem::file_time_type::clock::now() - std::chrono::minutes(1);
    for (const char* const former : {"~pft-out.txt", "last-run.ini"}) {
      WriteBytes(Installed(former), "former");
      std::filesystem::last_write_time(Installed(former), aMinuteAgo);
    }
    InstallSolver(script);
    Choose("mnuFileSubmit");
    EXPECT_EQ(Verdict(), verdict);
    EXPECT_EQ(Offered(), buttons) << verdict;
  }
}

TEST_F(StandInTest, ASlowRunShowsItsOutputAndItsProgressAsTheyCome) {
  Submit("printf 'start 1  120 '; sleep .2; printf 'of 2000  rho 1\\n'; exec sleep 60",
         "120 of 2000");
  EXPECT_EQ(The<QProgressBar>("progress").value(), 120);
  EXPECT_EQ(The<QProgressBar>("progress").maximum(), 2000);
  EXPECT_EQ(TextOf("RunState"), "Running run1.txt: 120 of 2000 evaluations") << "on tab 7 too";
  EXPECT_THAT(TextOf("lblCommand"), HasSubstr("/Tessel.hz/pfit run1.txt "));
  EXPECT_THAT(TextOf("lblElapsed"), StartsWith("Elapsed 0:0"));
  EXPECT_EQ(Offered(), "cmdStop");
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "the form is usable";
  EXPECT_THAT(StopAndVerdict(), StartsWith("Stopped: by you"));
}

TEST_F(StandInTest, StopLetsTheSolverWriteItsBestValuesButLeavesNothingRunning) {
  Submit(
      "trap '' TERM; sleep 60 & echo \"child $!\"\n"
      "trap 'values; report; say \"stopped on request; best point found is given\"; exit 1' TERM\n"
      "while :; do sleep .05; done",
      "child ");
  const long child = std::stol(Output().substr(Output().find("child ") + 6));
  Click("cmdStop");
  QTest::mouseDClick(&The("cmdStop"), Qt::LeftButton);
  QTest::mouseRelease(&The("cmdStop"), Qt::LeftButton);
  EXPECT_EQ(Verdict(), "Stopped: by you; the best values so far are kept.") << "a double click";
  EXPECT_EQ(Offered(), "cmdReport cmdImproved");
  EXPECT_TRUE(Comes([child] { return !LookAtProcess(child); }));
}

TEST_F(StandInTest, ASolverThatIgnoresTheSignalIsEndedAtOnce) {
  Submit("trap 'echo heard' TERM; echo on; while :; do sleep 60; done", "on");
  Click("cmdStop");
  WaitForOutput("heard");
  EXPECT_EQ(TextOf("lblVerdict"), "");
  EXPECT_EQ(StopAndVerdict(), "Stopped: by you, before the solver could write its results.");
  EXPECT_EQ(TextOf("cmdStop"), "Stop");
}

TEST_F(StandInTest, ARunThatIsOnRefusesASecondOneAndIsFoundByALaterStart) {
  Submit("echo first; exec sleep 60", "first");
  const std::string before = FileBytes(Installed("User/run1.txt"));
  SetText("tmin", "changed");
  answers.Press(QMessageBox::Ok);
  Choose("mnuFileSubmit");
  EXPECT_THAT(answers.said.back(), StartsWith("A run is going on|The run of 'run1.txt' is still"));
  EXPECT_EQ(FileBytes(Installed("User/run1.txt")), before);
  WaitForOutput("first");
  Start();
  WaitForOutput("first");
  EXPECT_EQ(TextOf("lblDataFile"), "run1.txt");
  EXPECT_THAT(StopAndVerdict(), StartsWith("Stopped: by you"));
  Start();
  EXPECT_THAT(Titles(), ElementsAre("Start Up Values - Polefit"));
}

TEST_F(StandInTest, OfRunsThatStartAtTheSameMomentOneGoesOnAndTheOthersAreRefused) {
  InstallSolver("echo \"$1\"; exec sleep 60");
  const std::string restart = root.File("desktop/autostart/polefit-restart.desktop");
  WriteBytes(restart, "of the run that goes on");
  std::atomic<int> refused = 0;
  const auto start = [this, &refused](const std::string& file) {
    Command command{Installed("run-Freq.pif"), {file, Installed("User"), base, "/t"}};
    command.object = base + "/Tessel.hz";
    ConsoleHost own;
    try {
      RunWatch(own).Start(command);
    } catch (const RunTimeError& error) {
      EXPECT_THAT(error.description, StartsWith("The run of '"));
      ++refused;
    }
  };
  std::deque<std::thread> starts;
  for (int i = 0; i < 8; ++i) starts.emplace_back(start, "run" + std::to_string(i));
  for (std::thread& each : starts) each.join();
  EXPECT_EQ(refused, 7);
  EXPECT_EQ(FileBytes(restart), "of the run that goes on");
  Start();
  WaitForOutput("run");
  EXPECT_EQ(Output(), TextOf("lblDataFile"));
  StopAndVerdict();
}

TEST_F(StandInTest, ARunGetsItsFourWordsWholeWhateverTheFoldersAreCalled) {
  for (const std::string name : {"two  words", "Program FILES", "Größe Ü", "it's \"it\"",
                                 "wow! $HOME %f", "-dash", "a;b&c|d"}) {
    Install(name);
    InstallSolver(
        "for word; do echo \"[$word]\"; done > words; test -r \"$read\" && say converged");
    Start(MakeFile(name + ".Txt"));
    Choose("mnuFileSubmit");
    EXPECT_THAT(Verdict(), StartsWith("Good: ")) << name;
    EXPECT_EQ(FileBytes(Installed("words")), "[" + name + ".Txt]\n[" + Installed("User") + "]\n[" +
                                                 base + "]\n[" + base.substr(0, 2) + "]\n");
  }
}

}  // namespace
}  // namespace polefit::testing

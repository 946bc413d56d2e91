#include "runs/run_watch.h"

#include <gmock/gmock.h>

#include "base/error_of.h"
#include "platform/scripted_host.h"

namespace polefit::testing {
namespace {

using ::testing::AnyOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class RunWatchTest : public ::testing::Test {
 protected:
  RunWatchTest() {
    command_.object = places_.program;
    LeaveFormerResults();
  }

  void LeaveFormerResults() const {
    for (const std::string& path : {places_.Report(), places_.LastRun()}) {
      WriteBytes(path, "of a former run");
      const auto now = std::filesystem::file_time_type::clock::now();
      std::filesystem::last_write_time(path, now - std::chrono::minutes(1));
    }
  }

  long Start() { return watch_.Start(command_); }
  /// Ends the process as the solver would: with these last lines, results and word of its end.
  void End(const std::string& log, bool hasResults, const std::string& ending) {
    WriteBytes(places_.RunLog(), log);
    if (hasResults) {
      WriteBytes(places_.Report(), "report");
      WriteBytes(places_.LastRun(), "values");
    }
    if (!ending.empty()) {
      WriteBytes(places_.RunEnding(), std::to_string(Id()) + ' ' + ending + '\n');
    }
    host_.processes.clear();
  }
  long Id() const { return watch_.Run()->process.id; }
  /// The verdict once it is there, be it after the patience with a missing word of the end.
  std::string Verdict() {
    watch_.Poll();
    if (watch_.IsOn()) {
      host_.now += 3000;
      watch_.Poll();
    }
    return watch_.End() ? watch_.End()->verdict.text : "still on";
  }
  /// Another watch, as after a new start of the program, on the run that is on; false for none.
  bool FindsRun() { return RunWatch(host_).Find(places_); }

  ScriptedHost host_;
  const Places places_ = Places::Below(host_.Root());
  Command command_{places_.SolverStart(), {"run 1.txt", "/data", host_.Root(), "/t"}};
  RunWatch watch_{host_};
};

TEST_F(RunWatchTest, ARunIsStartedRecordedAndJudgedByNumbers) {
  EXPECT_EQ(Start(), 4711);
  EXPECT_THAT(host_.TakeTranscript(),
              ElementsAre("TakeLock @/Tessel.hz", "ReplaceFile @/Tessel.hz/~pft-end.txt",
                          "StartProcess @/Tessel.hz/pfit run 1.txt /data @ /t",
                          "ReplaceFile @/Tessel.hz/~pft-run.txt"));
  WriteBytes(places_.RunLog(), "start 1: 20 of 2000\n");
  host_.now += 61'000;
  EXPECT_THAT(watch_.Poll().lines, ElementsAre("start 1: 20 of 2000"));
  EXPECT_EQ(watch_.Seconds(), 61);
  EXPECT_TRUE(watch_.IsOn());
  End("start 1: 20 of 2000\npfit: converged\npfit-end: exit=0 F=1.5e-4\n", true, "exit 0");
  watch_.Poll();
  ASSERT_TRUE(watch_.End());
  EXPECT_THAT(watch_.End()->verdict.text, StartsWith("Good: "));
  EXPECT_EQ(watch_.End()->figures.at("F"), 1.5e-4);
  EXPECT_TRUE(watch_.End()->hasReport && watch_.End()->hasValues);
}

TEST_F(RunWatchTest, EveryEndIsJudgedAndNoFormerResultIsTakenForItsOwn) {
  const std::string kGood = "Good: as far as the solver says, with no figures.";
  const std::tuple<const char*, bool, const char*, std::string> cases[] = {
      {"", false, "", "Failed: the solver broke off without a report."},
      {"pfit: converged\npfit-end: exit=0\n", true, "", kGood},
      {"pfit: converged\npfit-end: exit=0 F=1", true, "",
       "Stopped: with a report and improved values; how is not known."},
      {"x\n", false, "exit 0", kGood + "  No report was written."},
      // The word of another process's end, or one that is torn, is none.
      {"", true, "exit", "Stopped: with a report and improved values; how is not known."}};
  for (const auto& [log, hasResults, ending, verdict] : cases) {
    LeaveFormerResults();
    Start();
    End(log, hasResults, ending);
    EXPECT_EQ(Verdict(), verdict) << log << ending;
    EXPECT_EQ(watch_.End()->hasReport, hasResults) << verdict;
  }
  LeaveFormerResults();
  Start();
  End("", false, "");
  WriteBytes(places_.RunEnding(), "1 exit 0\n");
  EXPECT_THAT(Verdict(), StartsWith("Failed: the solver broke off without a report"));
}

TEST_F(RunWatchTest, TimesOfAFileSystemWithWholeSecondsAndAClockBehindAreComparedWithItsOwn) {
  Start();
  // The folder's clock says an hour ago, in steps of two seconds.
  RunRecord run = *watch_.Run();
  const auto anHourAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
  const auto coarse = std::chrono::floor<std::chrono::seconds>(anHourAgo);
  for (const std::string& path : {places_.RunEnding(), places_.Report()}) {
    std::filesystem::last_write_time(path, coarse);
  }
  run.stamp = host_.StateOfFile(places_.RunEnding())->modified;
  EXPECT_TRUE(IsResultOf(host_, run, places_.Report()));
  std::filesystem::last_write_time(places_.Report(), coarse - std::chrono::seconds(2));
  EXPECT_FALSE(IsResultOf(host_, run, places_.Report()));
}

TEST_F(RunWatchTest, ARunIsFoundAgainWithItsLogFromTheTailAndItsStopKnown) {
  Start();
  WriteBytes(places_.RunLog(), std::string(10'000'000, '\n') + "late 7 of 9\n");
  EXPECT_EQ(watch_.Stop(), Stopping::asked);
  RunWatch later(host_);
  EXPECT_TRUE(later.Find(places_));
  EXPECT_FALSE(later.Find(places_)) << "it is watched";
  EXPECT_EQ(later.Poll().lines.back(), "late 7 of 9");
  EXPECT_EQ(later.Progress(), (RunProgress{7, 9}));
  EXPECT_EQ(later.Stop(), Stopping::endedAtOnce);
  End("", false, "signal 9");
  later.Poll();
  EXPECT_EQ(later.End()->verdict.outcome, Outcome::stopped);
  EXPECT_THAT(host_.TakeTranscript(),
              ::testing::IsSupersetOf({"EndGroup 4711", "EndGroup 4711 at once"}));
  EXPECT_FALSE(FindsRun());
}

TEST_F(RunWatchTest, ATornOrForeignRecordIsNoRun) {
  const long id = Start();
  const std::string whole = FileBytes(places_.RunRecord());
  ASSERT_TRUE(FindsRun());
  for (std::size_t length = 0; length < whole.size(); length += 3) {
    WriteBytes(places_.RunRecord(), whole.substr(0, length));
    const auto torn = ReadRunRecord(host_, places_);
    EXPECT_TRUE(!torn || torn->words.size() < 5) << length;
  }
  WriteBytes(places_.RunRecord(), whole);
  // Somebody else's process: one that came later, and ones that were never started as a run.
  ProcessState& process = host_.processes[id];
  const ProcessState ours = process;
  process.start += 1;
  EXPECT_FALSE(FindsRun());
  process = ours;
  process.isKept = false;
  EXPECT_TRUE(FindsRun()) << "its words tell";
  process.words.insert(process.words.begin(), "/bin/sh");
  EXPECT_TRUE(FindsRun()) << "a script's too";
  process.words = {"/usr/bin/important"};
  EXPECT_FALSE(FindsRun());
  EXPECT_EQ(watch_.Stop(), Stopping::isOver);
  EXPECT_EQ(Start(), id + 1) << "and it does not keep a run from starting";
  EXPECT_THAT(::testing::PrintToString(host_.TakeTranscript()), Not(HasSubstr("EndGroup")));
}

TEST_F(RunWatchTest, TheRunOfAnotherUserIsSeenButNotStopped) {
  host_.processes[Start()].isOwn = false;
  EXPECT_TRUE(FindsRun());
  EXPECT_EQ(watch_.Stop(), Stopping::isNotOurs);
  EXPECT_EQ(watch_.Run()->stops, 0);
  host_.ReplyToBox(Reply::ok);
  EXPECT_FALSE(MayStartRun(host_, places_));
}

TEST_F(RunWatchTest, ASecondRunIsRefusedAndTheFirstKeepsItsLogAndRecord) {
  Start();
  const std::string record = FileBytes(places_.RunRecord());
  WriteBytes(places_.RunLog(), "first\n");
  RunWatch second(host_);
  EXPECT_THAT(ThrownBy([&] { second.Start(command_); }).description,
              StartsWith("The run of 'run 1.txt' is still going on"));
  const auto held = host_.TakeLock(places_.program, std::chrono::milliseconds(0));
  EXPECT_THAT(ThrownBy([&] { second.Start(command_); }).description,
              StartsWith("Another program holds the folder '" + places_.program));
  EXPECT_EQ(FileBytes(places_.RunRecord()), record);
  EXPECT_EQ(FileBytes(places_.RunLog()), "first\n");
}

TEST_F(RunWatchTest, WhateverFailsAtTheStartLeavesNoRunAndNoRestart) {
  for (const char* const operation : {"StartProcess", "ReplaceFile"}) {
    for (int call = 1; call <= 2; ++call) {
      if (operation == std::string("StartProcess") && call == 2) continue;
      host_.processes.clear();
      host_.TakeTranscript();
      host_.Fail(operation, error_number::kDiskFull, call);
      EXPECT_EQ(ErrorOf([this] { Start(); }), error_number::kDiskFull) << operation << call;
      EXPECT_FALSE(watch_.IsOn());
      EXPECT_EQ(host_.transcript.back(), "WithdrawRestart");
      const bool isEnded =
          host_.processes.empty() ||
          ::testing::PrintToString(host_.transcript).find("at once") != std::string::npos;
      EXPECT_TRUE(isEnded) << "a run without a record could not be stopped";
    }
  }
}

TEST_F(RunWatchTest, NamesWithLineBreaksComeBackWhole) {
  command_.arguments = {"a\nb.txt", "/da\\ta", "/x\\n", "/x"};
  Start();
  EXPECT_EQ(ReadRunRecord(host_, places_), watch_.Run());
}

}  // namespace
}  // namespace polefit::testing

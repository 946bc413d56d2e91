#include "runs/run_history.h"

#include <gmock/gmock.h>

#include "platform/scripted_host.h"

namespace polefit::testing {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// An installation with a data file, and a history that is empty.
class RunHistoryTest : public ::testing::Test {
 protected:
  RunHistoryTest() {
    places_.state = host_.StateFolder();
    command_.object = places_.program;
    WriteBytes(host_.Path("data/vna 1"), "the input");
    history_.onFailure = [this](const RunTimeError& error) { failures_.push_back(error.number); };
  }

  /// Runs the solver to its end, with nobody watching any more.
  void Run(const std::string& results, const char* exit = "exit=0 rms=.001 ipower=0") {
    host_.now += 1000;
    watch_.Start(command_);
    history_.KeepInput(*watch_.Run());
    WriteBytes(places_.RunLog(), std::string("pfit: converged\npfit-end: ") + exit + "\n");
    if (!results.empty()) WriteBytes(places_.Report(), "report " + results);
    if (!results.empty()) WriteBytes(places_.LastRun(), "values " + results);
    host_.processes.clear();
  }
  void RunAndKeep(const std::string& results) {
    Run(results);
    history_.KeepLast(places_);
  }
  /// What a start of the program finds.
  std::vector<KeptRun> AfterStart() {
    RunHistory later(host_);
    later.KeepLast(places_);
    return later.All();
  }

  ScriptedHost host_;
  Places places_ = Places::Below(host_.Root());
  Command command_{places_.SolverStart(), {"vna 1", host_.Path("data"), host_.Root(), "/t"}};
  RunWatch watch_{host_};
  RunHistory history_{host_};
  std::vector<int> failures_;
};

TEST_F(RunHistoryTest, ARunIsKeptWholeWithTheInputThatItRead) {
  Run("1");
  WriteBytes(host_.Path("data/vna 1"), "edited since");
  history_.KeepLast(places_);
  history_.KeepLast(places_);
  const std::vector<KeptRun> runs = history_.All();
  ASSERT_THAT(runs, SizeIs(1));
  EXPECT_EQ(runs[0].file, "vna 1");
  EXPECT_EQ(runs[0].folder, host_.Path("data"));
  EXPECT_EQ(runs[0].started, host_.now);
  EXPECT_EQ(runs[0].verdict.text, "Good: rms 0.1 %.");
  EXPECT_EQ(runs[0].verdict.ending, "converged");
  EXPECT_EQ(runs[0].Figure("rms"), .001);
  EXPECT_EQ(history_.ContentsOf(runs[0]), (RunContents{"the input", "report 1", "values 1"}));
  EXPECT_THAT(host_.FilesIn(places_.Runs()), SizeIs(1)) << "the input's copy is gone";
}

TEST_F(RunHistoryTest, NotesAndPinsAreKeptAndADeletedRunStaysAway) {
  RunAndKeep("1");
  RunAndKeep("2");
  history_.SetNote(history_.All()[1], "two\nlines \\ of it");
  history_.SetPinned(history_.All()[1], true);
  history_.Delete(history_.All()[0]);
  const std::vector<KeptRun> runs = AfterStart();
  ASSERT_THAT(runs, SizeIs(1));
  EXPECT_EQ(runs[0].note, "two\nlines \\ of it");
  EXPECT_TRUE(runs[0].isPinned);
  EXPECT_EQ(history_.ContentsOf(runs[0]).report, "report 1");
}

TEST_F(RunHistoryTest, AnEndAtAnyMomentOfKeepingLosesNoRun) {
  RunAndKeep("1");
  for (const char* const operation : {"MakeOwnFolders", "ReplaceFile", "DeleteFile", "ReadFile"}) {
    for (int call = 1; call <= 4; ++call) {
      const std::size_t before = AfterStart().size();
      Run("next");
      host_.Fail(operation, error_number::kDiskFull, call);
      history_.KeepLast(places_);
      host_.ForgetFaults();
      EXPECT_THAT(AfterStart(), SizeIs(before + 1)) << operation << call;
      EXPECT_EQ(history_.ContentsOf(history_.All()[0]).report, "report next");
    }
  }
  EXPECT_THAT(failures_, ElementsAre(error_number::kDiskFull)) << "said once";
  RunAndKeep("last");
  EXPECT_THAT(host_.FilesIn(places_.Runs()), Each(EndsWith(".run"))) << "no copy is left over";
}

TEST_F(RunHistoryTest, TornAndForeignFilesAreNoRunsAndStopNothing) {
  RunAndKeep("1");
  const std::string bytes = FileBytes(places_.Runs() + "/" + history_.All()[0].id + ".run");
  int number = 1;
  for (const std::size_t cut : {0UL, 5UL, 60UL, bytes.size() - 1}) {
    WriteBytes(places_.Runs() + "/" + std::to_string(number++) + "-1.run", bytes.substr(0, cut));
  }
  WriteBytes(places_.Runs() + "/9-1.run", bytes + "more");
  WriteBytes(places_.Runs() + "/notes.run", bytes);
  EXPECT_THAT(AfterStart(), SizeIs(1));
  RunAndKeep("2");
  EXPECT_THAT(AfterStart(), SizeIs(2));
  WriteBytes(places_.RunRecord(), "torn");
  EXPECT_THAT(AfterStart(), SizeIs(2));
  std::string tooLong = BytesOf({}, {});
  tooLong.replace(tooLong.find(" 0 0 0\n"), 7, " 1 18446744073709551615 0\n");
  EXPECT_FALSE(ReadRunContents(tooLong));
}

TEST_F(RunHistoryTest, AHistoryThatCannotBeWrittenStopsNoRun) {
  WriteBytes(places_.state, "a file in the folder's place");
  RunAndKeep("1");
  RunAndKeep("2");
  EXPECT_THAT(failures_, SizeIs(1));
  EXPECT_THAT(history_.All(), IsEmpty());
}

TEST(RunsToDropTest, TheOldestGoAndPinnedOnesStay) {
  using Runs = std::vector<std::pair<KeptRun, std::uint64_t>>;
  Runs runs;
  for (const char* const id : {"5", "4", "3", "2", "1"}) runs.push_back({KeptRun{.id = id}, 10});
  EXPECT_THAT(RunsToDrop(runs, {5, 50}), IsEmpty());
  EXPECT_THAT(RunsToDrop(runs, {3, 50}), ElementsAre("1", "2"));
  EXPECT_THAT(RunsToDrop(runs, {5, 39}), ElementsAre("1", "2"));
  EXPECT_THAT(RunsToDrop(runs, {0, 0}), ElementsAre("1", "2", "3", "4"));
  runs[4].first.isPinned = true;
  EXPECT_THAT(RunsToDrop(runs, {3, 50}), ElementsAre("2", "3"));
}

}  // namespace
}  // namespace polefit::testing

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>

#include "platform/temporary_folder.h"
#include "responsefile/writer.h"
#include "solver/example_problem.h"

namespace polefit::testing {
namespace {

/// Starts pfit with these words and its output in a file; its process id.
pid_t Start(const std::string& words, const std::string& output = "/dev/null") {
  const std::string command = "exec '" PFIT "' " + words + " >'" + output + "' 2>&1";
  const pid_t process = fork();
  if (process == 0) {
    execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
    _exit(127);
  }
  return process;
}

int ExitCode(pid_t process) {
  int status = 0;
  waitpid(process, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// A problem that takes minutes: the most points that there can be, and no end of evaluations. So a
/// run of it is on until it is ended.
void WriteLongProblem(const std::string& folder) {
  ResponseRecord record = ExampleRecord("Ex-Yzero.101", "23=32766");
  RepeatPoints(record, 32766);
  record.solver = {"99 10 7", "0 0 0", "1e-15 1e-5 1e-5", "99999", "10", "999999", "1",
                   "16",      "1e-15"};
  ConsoleHost host;
  WriteResponseFile(host, record, {folder, "long.1"});
}

/// Waits until a run has come so far; false when it ends before.
bool Comes(pid_t process, const std::function<bool()>& isSo) {
  siginfo_t ended{};
  while (!isSo()) {
    waitid(P_PID, static_cast<id_t>(process), &ended, WEXITED | WNOHANG | WNOWAIT);
    if (ended.si_pid == process) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return true;
}

// What a real process alone shows: signals, pipes, locks, exit codes. How soon a run heeds a
// request to stop is counted in evaluations where there is no process.

TEST(Process, EndsAtASignalWithTheBestPointSoFar) {
  const TemporaryFolder folder;
  WriteLongProblem(folder.Path());
  for (const int signal : {SIGTERM, SIGINT}) {
    const std::string log = folder.File("log");
    WriteBytes(log, "");
    const pid_t process = Start(folder.File("long.1"), log);
    ASSERT_TRUE(Comes(process, [&] { return FileBytes(log).find(" of ") != std::string::npos; }));
    kill(process, signal);
    EXPECT_EQ(ExitCode(process), 1);
    EXPECT_THAT(FileBytes(log), ::testing::EndsWith(" asked=1\n"));
    const std::string report = FileBytes(folder.File("long.1.out.txt"));
    EXPECT_THAT(report, ::testing::HasSubstr("Result: stopped on request; best point found"));
    EXPECT_THAT(report, ::testing::EndsWith("End of report.\r\n"));
  }
}

TEST(Process, IsNotHeldByAPipe) {
  const TemporaryFolder folder;
  const std::string pipe = folder.File("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(ExitCode(Start(pipe + " --out " + folder.Path())), 3);
  std::system(
      ("'" PFIT "' '" EXAMPLES "/Ex-Delay.101' --out '" + folder.Path() + "' | true").c_str());
  EXPECT_THAT(FileBytes(folder.File("Ex-Delay.101.out.txt")),
              ::testing::EndsWith("End of report.\r\n"));
}

TEST(Process, LeavesTheFolderFreeWhenItIsKilled) {
  const TemporaryFolder folder;
  WriteLongProblem(folder.Path());
  const pid_t first = Start(folder.File("long.1"));
  ASSERT_TRUE(Comes(first, [&] { return std::filesystem::exists(folder.File("long.1.lock")); }));
  EXPECT_EQ(ExitCode(Start(folder.File("long.1"))), 7);
  kill(first, SIGKILL);
  ExitCode(first);
  WriteBytes(folder.File("long.1"), FileBytes(EXAMPLES "/Ex-Delay.101"));
  EXPECT_EQ(ExitCode(Start(folder.File("long.1"))), 0);
}

TEST(Process, SaysWhenItsResultCannotBeWritten) {
  const TemporaryFolder folder;
  const std::string words = "'" EXAMPLES "/Ex-Delay.101' --out '" + folder.Path() + "' > /dev/full";
  EXPECT_EQ(std::system(("'" PFIT "' --json " + words + " 2>&1").c_str()), 4 << 8);
  EXPECT_EQ(std::system(("'" PFIT "' --summary " + words + " 2>&1").c_str()), 4 << 8);
  EXPECT_EQ(std::system("'" PFIT "' --help > /dev/full 2>&1"), 4 << 8);
}

TEST(Process, RefusesWhatItDoesNotUnderstand) {
  EXPECT_EQ(ExitCode(Start("")), 6);
  EXPECT_EQ(ExitCode(Start("--wrong")), 6);
  EXPECT_EQ(ExitCode(Start("--version")), 0);
  const TemporaryFolder folder;
  EXPECT_EQ(ExitCode(Start(folder.File("none"))), 3);
}

}  // namespace
}  // namespace polefit::testing

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

/// A problem that takes many seconds under the sanitizers: the most points that there can be, and
/// no end of evaluations.
void WriteLongProblem(const std::string& folder) {
  ResponseRecord record = ExampleRecord("Ex-Yzero.101", "23=32766");
  const PassbandLists few = record.passband;
  record.nFreqPoints = 32766;
  record.passband.Resize(record.nFreqPoints + 1);
  for (int row = 1; row <= record.nFreqPoints; ++row) {
    for (int column = 1; column <= 4; ++column) {
      record.passband.At(row, column) = few.At(1 + row % 21, column);
    }
  }
  record.solver = {"99 10 7", "0 0 0", "1e-15 1e-5 1e-5", "99999", "10", "999999", "1",
                   "16",      "1e-15"};
  ConsoleHost host;
  WriteResponseFile(host, record, {folder, "long.1"});
}

/// Waits until a run that takes long has come so far; it is well before its end then.
void WaitUntil(const std::function<bool()>& isSo) {
  while (!isSo()) std::this_thread::sleep_for(std::chrono::milliseconds(20));
}

TEST(Process, EndsAtASignalWithTheBestPointSoFar) {
  const TemporaryFolder folder;
  WriteLongProblem(folder.Path());
  for (const int signal : {SIGTERM, SIGINT}) {
    const std::string log = folder.File("log");
    WriteBytes(log, "");
    const pid_t process = Start(folder.File("long.1"), log);
    WaitUntil([&] { return FileBytes(log).find(" of ") != std::string::npos; });
    const auto sent = std::chrono::steady_clock::now();
    kill(process, signal);
    EXPECT_EQ(ExitCode(process), 1);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - sent;
    EXPECT_LT(taken.count(), 3);  // under the sanitizers; 0.2 s in the program that ships
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
  WaitUntil([&] { return std::filesystem::exists(folder.File("long.1.lock")); });
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

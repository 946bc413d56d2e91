#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <random>

#include "platform/scripted_host.h"
#include "responsefile/writer.h"

namespace polefit {
namespace {

using testing::FileBytes;

/// A record whose file is some buffers long.
ResponseRecord LongRecord(const std::string& cell) {
  constexpr std::int16_t kRows = 4000;
  ResponseRecord record;
  record.passband.Resize(kRows + 1);
  record.delay.Resize(1);
  record.nFreqPoints = kRows;
  for (int row = 1; row <= kRows; ++row) {
    for (int column = 1; column <= 4; ++column) record.passband.At(row, column) = cell;
  }
  return record;
}

TEST(KilledSaveTest, TheFormerOrTheNewFileIsWholeWheneverTheProgramIsKilled) {
  testing::ScriptedHost host;
  ResponseRecord records[] = {LongRecord("0.5"), LongRecord("0.123456789")};
  const std::string path = host.Path("run1.txt");
  std::string whole[2];
  for (int i : {0, 1}) {
    WriteResponseFile(host, records[i], {host.Root(), "run1.txt"});
    whole[i] = FileBytes(path);
  }
  std::mt19937 random(20231);
  int interrupted = 0;
  for (int kill = 0; kill < 50; ++kill) {
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      for (int i = 0;; i = 1 - i) WriteResponseFile(host, records[i], {host.Root(), "run1.txt"});
    }
    ::usleep(std::uniform_int_distribution<unsigned>(2000, 30000)(random));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    const std::string named = FileBytes(path);
    const std::string aside = FileBytes(path + "~");
    const auto isWhole = [&](const std::string& bytes) {
      return bytes == whole[0] || bytes == whole[1];
    };
    EXPECT_TRUE(isWhole(named) || isWhole(aside)) << "at the kill number " << kill;
    if (!isWhole(named)) ++interrupted;
    if (!aside.empty()) std::filesystem::rename(path + "~", path);
  }
  EXPECT_GT(interrupted, 5) << "the kills missed the moments of writing";
}

}  // namespace
}  // namespace polefit

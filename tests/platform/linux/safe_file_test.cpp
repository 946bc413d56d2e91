#include "platform/linux/safe_file.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "platform/linux/system_faults.h"
#include "platform/temporary_folder.h"

namespace polefit::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::AnyOf;
using ::testing::ElementsAre;

class SafeFileTest : public ::testing::TestWithParam<Saving> {
 protected:
  /// A file with former content, as nobody has tried to save it.
  void Prepare() {
    for (const char* const ending : {"", "~", "~~", ".new"}) fs::remove(path_ + ending);
    WriteBytes(path_, "former");
  }
  void Save(SafeFile& file) const {
    file.Open(path_, GetParam());
    file.Write("new ");
    file.Write("content");
    file.Close();
  }
  void Save() const {
    SafeFile file;
    Save(file);
  }
  /// One of the two contents is there, whole.
  void ExpectNothingLost(const std::string& when) const {
    const bool isWhole = ::testing::Value(FileBytes(path_), AnyOf("former", "new content"));
    if (GetParam() == Saving::whole) {
      EXPECT_TRUE(isWhole) << when;
    } else {
      EXPECT_TRUE(isWhole || FileBytes(path_ + "~") == "former") << when;
    }
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.File("Run1.txt");
};

INSTANTIATE_TEST_SUITE_P(BothWays, SafeFileTest, ::testing::Values(Saving::aside, Saving::whole));

TEST_P(SafeFileTest, WhateverCallFailsOneOfTheContentsIsWholeAndTheNextSaveEndsIt) {
  int strikes = 0;
  for (const std::string& call : kFileCalls) {
    for (const int error : {EIO, EACCES}) {
      bool isStruck = true;
      for (int at = 1; isStruck; ++at) {
        const std::string when = call + " " + std::to_string(at) + " " + std::to_string(error);
        Prepare();
        SafeFile file;
        isStruck = RunUnder({call, at, error}, [&] { Save(file); });
        ExpectNothingLost(when);
        strikes += isStruck ? 1 : 0;
        EXPECT_TRUE(isStruck || FileBytes(path_) == "new content") << when;
        // The user takes the former content back, and the disk is as bad as before.
        if (fs::exists(path_ + "~")) fs::rename(path_ + "~", path_);
        RunUnder({call, at, error}, [&] { Save(file); });
        ExpectNothingLost(when + ", put back");
        Save(file);
        EXPECT_EQ(FileBytes(path_), "new content") << when;
        EXPECT_FALSE(fs::exists(path_ + ".new")) << when;
      }
    }
  }
  EXPECT_GT(strikes, 20);
}

TEST_P(SafeFileTest, WhereverTheProgramIsKilledOneOfTheContentsIsWhole) {
  const std::size_t calls = CallsOf([this] { Save(); }).size();
  EXPECT_GT(calls, 9U);
  for (std::size_t at = 1; at <= calls; ++at) {
    Prepare();
    const pid_t saving = ::fork();
    if (saving == 0) {
      RunUnder({"", static_cast<int>(at), 0, true}, [this] { Save(); });
      ::_exit(0);
    }
    int status = 0;
    ::waitpid(saving, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << at;
    ExpectNothingLost("killed at call " + std::to_string(at));
  }
}

TEST_P(SafeFileTest, TheDiskHasContentAndNameBeforeTheFormerOneGoes) {
  Prepare();
  std::string order;
  for (const std::string& call : CallsOf([this] { Save(); })) {
    if (call == "write" || call == "fsync" || call == "rename" || call == "unlink") {
      order += call + " ";
    }
  }
  EXPECT_EQ(order, GetParam() == Saving::aside ? "rename write write fsync fsync unlink "
                                               : "unlink write write fsync rename fsync ");
}

TEST_P(SafeFileTest, WhatLiesUnderTheNameForFormerContentStaysWhateverCallFails) {
  for (const std::string& call : kFileCalls) {
    bool isStruck = true;
    for (int at = 1; isStruck; ++at) {
      Prepare();
      WriteBytes(path_ + "~", "of a crash");
      isStruck = RunUnder({call, at, EIO}, [this] { Save(); });
      EXPECT_EQ(FileBytes(path_ + "~"), "of a crash") << call << at;
    }
  }
}

TEST_P(SafeFileTest, NothingIsReadableByMoreUsersThanBefore) {
  Prepare();
  ::chmod(path_.c_str(), 0640);
  SafeFile file;
  file.Open(path_, GetParam());
  const std::string growing = path_ + (GetParam() == Saving::whole ? ".new" : "");
  EXPECT_EQ(fs::status(growing).permissions(), fs::perms(0640));
  file.Close();
  EXPECT_EQ(fs::status(path_).permissions(), fs::perms(0640));
  const std::string own = folder_.File("own");
  ReplaceFileSafely(own, "x", Readers::ownerOnly);
  EXPECT_EQ(fs::status(own).permissions(), fs::perms(0600));
}

TEST_P(SafeFileTest, PlantedLinksAreNotWrittenThrough) {
  const std::string elsewhere = folder_.File("elsewhere");
  WriteBytes(elsewhere, "untouched");
  for (const char* const ending : {"", "~", ".new"}) fs::create_symlink(elsewhere, path_ + ending);
  Save();
  EXPECT_EQ(FileBytes(elsewhere), "untouched");
  EXPECT_EQ(FileBytes(path_), "new content");
  EXPECT_FALSE(fs::is_symlink(path_));
}

TEST_P(SafeFileTest, ADeviceIsWrittenAsItStandsAndAPipeThatNobodyReadsIsRefused) {
  SafeFile file;
  file.Open("/dev/null", GetParam());
  file.Write("x");
  file.Close();
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  ASSERT_EQ(::mkfifo(path_.c_str(), 0600), 0);
  EXPECT_THROW(file.Open(path_, GetParam()), RunTimeError);
  EXPECT_TRUE(fs::is_fifo(path_));
}

}  // namespace
}  // namespace polefit::testing

#include "platform/shared_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "platform/error_of.h"
#include "platform/temporary_folder.h"

namespace polefit {
namespace {

namespace fs = std::filesystem;
using testing::ErrorOf;
using testing::FileBytes;
using testing::TemporaryFolder;
using testing::WriteBytes;

/// Lets no file grow beyond `bytes` while it lives: a disk that is full there.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    ::getrlimit(RLIMIT_FSIZE, &former_);
    const rlimit limit{bytes, former_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &former_); }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit former_{};
};

class SharedFileTest : public ::testing::Test {
 protected:
  void Save(const std::string& path, const std::string& line, int lines = 1) {
    file_.OpenForWriting(path);
    for (int i = 0; i < lines; ++i) file_.WriteLine(line);
    file_.Close();
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.File("Run1.txt");
  SharedFile file_;
};

TEST_F(SharedFileTest, LinesEndAtALineFeedAndBytesAreOrdinary) {
  using namespace std::string_literals;
  WriteBytes(path_, "a\r\nb\n\r\n\x00\x1A\rc\r\nlast\xBB"s);
  file_.OpenForReading(path_);
  for (const std::string& line : {"a"s, "b"s, ""s, "\x00\x1A\rc"s, "last»"s}) {
    EXPECT_EQ(file_.ReadLine(), line);
  }
  EXPECT_EQ(file_.LinesRead(), 5);
  EXPECT_EQ(ErrorOf([&] { file_.ReadLine(); }), 62);
}

TEST_F(SharedFileTest, FailuresHaveTheirNumbers) {
  EXPECT_EQ(ErrorOf([&] { file_.OpenForReading(path_); }), 53);
  EXPECT_EQ(ErrorOf([&] { file_.OpenForReading(folder_.File("no/x")); }), 76);
  EXPECT_EQ(ErrorOf([&] { file_.OpenForWriting(folder_.File("no/x")); }), 76);
  EXPECT_EQ(ErrorOf([&] { file_.OpenForWriting(folder_.Path()); }), 75);
  EXPECT_EQ(ErrorOf([&] { file_.ReadLine(); }), 52);
  file_.OpenForWriting(path_);
  EXPECT_EQ(ErrorOf([&] { file_.OpenForReading(path_); }), 55);
}

TEST_F(SharedFileTest, TheFormerContentLiesBesideUntilTheSaveIsComplete) {
  Save(path_, "former");
  ::chmod(path_.c_str(), 0640);
  file_.OpenForWriting(path_);
  file_.WriteLine("Ω new");
  EXPECT_EQ(FileBytes(path_ + "~"), "former\r\n");
  EXPECT_EQ(file_.Close(), 1);
  EXPECT_EQ(FileBytes(path_), "? new\r\n");
  EXPECT_FALSE(fs::exists(path_ + "~"));
  EXPECT_EQ(fs::status(path_).permissions(), fs::perms(0640));
}

TEST_F(SharedFileTest, AFullDiskLeavesThePartialFileAndTheFormerOne) {
  Save(path_, "former");
  const FullDisk disk(100'000);
  EXPECT_EQ(ErrorOf([&] { Save(path_, std::string(98, 'x'), 5000); }), 61);
  file_.Abandon();
  EXPECT_EQ(FileBytes(path_ + "~"), "former\r\n");
  EXPECT_EQ(fs::file_size(path_), 100'000U);
}

TEST_F(SharedFileTest, AFailedLineIsNotWrittenTwiceAndARetryKeepsTheFirstFormerContent) {
  Save(path_, "former");
  file_.OpenForWriting(path_);
  {
    const FullDisk disk(100);
    EXPECT_EQ(ErrorOf([&] { file_.WriteLine(std::string(70'000, 'x')); }), 61);
  }
  EXPECT_EQ(ErrorOf([&] { file_.Close(); }), 61);
  file_.Abandon();
  EXPECT_EQ(FileBytes(path_), std::string(100, 'x'));
  EXPECT_EQ(FileBytes(path_ + "~"), "former\r\n");
  Save(path_, "second try");
  EXPECT_EQ(FileBytes(path_), "second try\r\n");
  EXPECT_FALSE(fs::exists(path_ + "~"));
}

TEST_F(SharedFileTest, WhatACrashLeftIsNotOverwrittenByTheNextSave) {
  WriteBytes(path_ + "~", "whole");
  WriteBytes(path_, "torn");
  file_.OpenForWriting(path_);
  EXPECT_EQ(FileBytes(path_ + "~~"), "torn");
  file_.Close();
  EXPECT_EQ(FileBytes(path_ + "~"), "whole");
  EXPECT_FALSE(fs::exists(path_ + "~~"));
}

TEST_F(SharedFileTest, ALinkIsReplacedAndNotFollowed) {
  const TemporaryFolder elsewhere;
  WriteBytes(elsewhere.File("other"), "untouched");
  fs::create_symlink(elsewhere.File("other"), path_);
  Save(path_, "new");
  EXPECT_EQ(FileBytes(elsewhere.File("other")), "untouched");
  EXPECT_FALSE(fs::is_symlink(path_));
  EXPECT_EQ(FileBytes(path_), "new\r\n");
}

TEST_F(SharedFileTest, AProtectedFileOrFolderKeepsItsContent) {
  if (::geteuid() == 0) GTEST_SKIP() << "root may write everywhere";
  Save(path_, "former");
  fs::permissions(path_, fs::perms(0444));
  EXPECT_EQ(ErrorOf([&] { file_.OpenForWriting(path_); }), 70);
  fs::permissions(path_, fs::perms(0644));
  fs::permissions(folder_.Path(), fs::perms(0555));
  EXPECT_EQ(ErrorOf([&] { file_.OpenForWriting(path_); }), 70);
  fs::permissions(folder_.Path(), fs::perms(0755));
  EXPECT_EQ(FileBytes(path_), "former\r\n");
}

}  // namespace
}  // namespace polefit

#include "platform/linux/shared_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "base/error_of.h"
#include "platform/temporary_folder.h"

namespace polefit::testing {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

/// Lets no file grow beyond `bytes`: a disk that is full there.
void LimitFiles(rlim_t bytes) {
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit{};
  ::getrlimit(RLIMIT_FSIZE, &limit);
  limit.rlim_cur = std::min(bytes, limit.rlim_max);
  ::setrlimit(RLIMIT_FSIZE, &limit);
}

class SharedFileTest : public ::testing::Test {
 protected:
  void Save(const std::string& line, int lines = 1) {
    file_.OpenForWriting(path_);
    for (int i = 0; i < lines; ++i) file_.WriteLine(line);
    file_.Close();
  }
  std::string Former() { return FileBytes(path_ + "~"); }

  TemporaryFolder folder_;
  std::string path_ = folder_.File("Run1.txt");
  SharedFile file_;
};

TEST_F(SharedFileTest, LinesEndAtALineFeedAndBytesAreOrdinary) {
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
  Save("former");
  ::chmod(path_.c_str(), 0640);
  file_.OpenForWriting(path_);
  file_.WriteLine("Ω new");
  EXPECT_EQ(Former(), "former\r\n");
  EXPECT_EQ(file_.Close(), 1);
  EXPECT_EQ(FileBytes(path_), "? new\r\n");
  EXPECT_FALSE(fs::exists(path_ + "~"));
  EXPECT_EQ(fs::status(path_).permissions(), fs::perms(0640));
}

TEST_F(SharedFileTest, AFullDiskLeavesThePartialFileAndTheFormerOneUntilARetryEnds) {
  Save("former");
  LimitFiles(100'000);
  EXPECT_EQ(ErrorOf([&] { Save(std::string(98, 'x'), 5000); }), 61);
  LimitFiles(RLIM_INFINITY);
  errno = EACCES;  // whatever another call left there
  EXPECT_EQ(ErrorOf([&] { file_.Close(); }), 61);
  file_.Abandon();
  EXPECT_EQ(Former(), "former\r\n");
  EXPECT_EQ(fs::file_size(path_), 100'000U) << "what failed is not written later";
  Save("second try");
  EXPECT_EQ(FileBytes(path_), "second try\r\n");
  EXPECT_FALSE(fs::exists(path_ + "~"));
}

TEST_F(SharedFileTest, WhatACrashLeftIsNotOverwrittenByTheNextSave) {
  WriteBytes(path_ + "~", "whole");
  WriteBytes(path_, "torn");
  file_.OpenForWriting(path_);
  EXPECT_EQ(FileBytes(path_ + "~~"), "torn");
  file_.Close();
  EXPECT_EQ(Former(), "whole");
  EXPECT_FALSE(fs::exists(path_ + "~~"));
}

TEST_F(SharedFileTest, AProtectedFileOrFolderKeepsItsContent) {
  Save("former");
  // Root may write everywhere: there the file becomes somebody else's, who tries it.
  const uid_t self = ::geteuid();
  const uid_t user = self == 0 ? 65534 : self;
  for (const std::string& place : {path_, folder_.Path()}) {
    if (::chown(place.c_str(), user, ::getegid()) != 0) GTEST_SKIP() << "only root is there";
  }
  ASSERT_EQ(::seteuid(user), 0);
  for (const std::string& place : {path_, folder_.Path()}) {
    ::chmod(place.c_str(), 0555);
    EXPECT_EQ(ErrorOf([&] { file_.OpenForWriting(path_); }), 70) << place;
    ::chmod(place.c_str(), 0755);
  }
  ASSERT_EQ(::seteuid(self), 0);
  EXPECT_EQ(FileBytes(path_), "former\r\n");
}

}  // namespace
}  // namespace polefit::testing

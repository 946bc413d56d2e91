#include "platform/linux/linux_host.h"

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>

#include "base/error_of.h"
#include "base/pattern.h"
#include "platform/file_checks.h"
#include "platform/linux/system_faults.h"
#include "platform/paths.h"
#include "platform/scripted_host.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;

class LinuxHostTest : public ::testing::Test {
 protected:
  LinuxHostTest() {
    for (const char* const file : {"Ex-a.12", "b[1].txt", "User/x"}) WriteBytes(file, "");
  }

  ScriptedHost host_;
};

TEST_F(LinuxHostTest, FilesAreFoundByNameOrPatternAndFoldersByNameAlone) {
  const std::string paths[] = {"Ex-a.12",    "ex-a.12",      "Ex-?.1*", "*.txt",
                               "*.*",        "*.bin",        "User",    "U*",
                               "b[1].txt",   "b[1]*",        "User/?",  "no/*",
                               "no/x",       "Ex-a.12/x",    "",        std::string(300, 'n'),
                               host_.Root(), host_.Path("*")};
  std::vector<std::string> files;
  std::vector<std::string> folders;
  for (const std::string& path : paths) {
    if (FileExists(host_, path)) files.push_back(path);
    if (dirExists(host_, path)) folders.push_back(path);
  }
  EXPECT_THAT(files, ElementsAre("Ex-a.12", "Ex-?.1*", "*.txt", "*.*", "b[1].txt", "b[1]*",
                                 "User/?", host_.Path("*")));
  EXPECT_THAT(folders, ElementsAre("User", host_.Root()));
}

TEST_F(LinuxHostTest, ALookUpThatIsNotAllowedFindsNothing) {
  WriteBytes("x.txt", "");
  std::string file = "not looked for";
  bool isFolder = true;
  EXPECT_TRUE(RunUnder({"stat", 1, EACCES}, [&] { file = host_.LookUpFile("x.txt"); }));
  EXPECT_TRUE(RunUnder({"stat", 1, EACCES}, [&] { isFolder = host_.LookUpFolder("User"); }));
  EXPECT_EQ(file, "");
  EXPECT_FALSE(isFolder);
}

TEST_F(LinuxHostTest, PatternsStandForCharacters) {
  const std::tuple<const char*, const char*, bool> cases[] = {
      {"é.q", "?.q", true},     {"é.q", "??.q", false}, {"abcab", "*ab", true},
      {"abcab", "a*b*b", true}, {"abc", "a*d", false},  {"Makefile", "*.*", true},
      {"x", "", false},         {"", "**", true},       {"a*", "a\\*", false}};
  for (const auto& [name, pattern, fits] : cases) {
    EXPECT_EQ(FitsPattern(name, pattern), fits) << name << " " << pattern;
  }
}

TEST_F(LinuxHostTest, WhatIsNoRegularFileOrTooLargeIsRefusedAndNothingWaits) {
  ASSERT_EQ(::mkfifo("pipe", 0600), 0);
  sockaddr_un address{AF_UNIX, "socket"};
  const int listening = ::socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(::bind(listening, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  ::close(listening);
  WriteBytes("large", "x");
  std::filesystem::resize_file("large", kLargestFile + 1);
  WriteBytes("just", std::string(kLongestLine - 1, 'x') + "\n");
  WriteBytes("long", std::string(kLongestLine, 'x') + "\ny\n");
  const std::tuple<const char*, int, int> cases[] = {
      {"pipe", 75, 75}, {"socket", 75, 75}, {"/dev/zero", 75, 75}, {"User", 75, 75},
      {"large", 7, 7},  {"long", 7, 0},     {"just", 0, 0},        {"no/x", 76, 76}};
  for (const auto& [path, asLines, asWhole] : cases) {
    const auto readLines = [this, name = path] {
      host_.OpenForReading(name);
      host_.ReadLine();
    };
    EXPECT_EQ(ErrorOf(readLines), asLines) << path;
    host_.CloseFile();
    const RunTimeError error = ThrownBy([this, name = path] { host_.ReadFile(name); });
    EXPECT_EQ(error.number, asWhole) << path;
    EXPECT_EQ(error.path, asWhole == 0 ? "" : path);
    EXPECT_EQ(error.reason.empty(), asWhole == 0 || asWhole == 76) << path;
  }
  EXPECT_EQ(host_.ReadFilePart("large", kLargestFile - 1, 99), std::string(2, '\0'));
}

TEST_F(LinuxHostTest, ALockIsHeldByOneAndGoesWithItsFileAndIsTakenThroughNoLink) {
  const std::chrono::milliseconds noTime(0);
  for (const char* const path : {"User", "x.lock"}) {
    auto held = host_.TakeLock(path, noTime);
    EXPECT_TRUE(held != nullptr && host_.TakeLock(path, noTime) == nullptr) << path;
    held.reset();
    EXPECT_NE(host_.TakeLock(path, noTime), nullptr) << path;
  }
  EXPECT_TRUE(host_.LookUpFile("x.lock").empty());
  std::filesystem::create_symlink("planted", "x.lock");
  EXPECT_NE(ErrorOf([&] { host_.TakeLock("x.lock", noTime); }), 0);
  EXPECT_TRUE(host_.LookUpFile("planted").empty());
}

TEST_F(LinuxHostTest, ErrorsOfTheLookUpsAreReportedUnderTheirNames) {
  host_.Fail("LookUpFile", 68);
  host_.Fail("LookUpFolder", 68);
  host_.ReplyToBox(Reply::ok, Reply::ok);
  EXPECT_TRUE(FileExists(host_, "*.txt"));
  EXPECT_TRUE(dirExists(host_, "User"));
  EXPECT_THAT(host_.transcript, ElementsAre("LookUpFile -> error 68",
                                            "MessageBox 48 [In 'FileExists' routine ...] This "
                                            "drive or path does not exist: *.txt -> ok",
                                            "LookUpFolder -> error 68",
                                            "MessageBox 48 [In 'dirExists' routine ...] This drive "
                                            "or path does not exist: User -> ok"));
}

TEST_F(LinuxHostTest, APathIsSplitAtTheLastOfEitherSeparator) {
  const std::tuple<const char*, const char*, std::string> cases[] = {
      {"/data/run1.txt", "run1.txt", "/data"},
      {"C:\\data\\run1.txt", "run1.txt", "C:\\data"},
      {"C:\\data/mixed\\x", "x", "C:\\data/mixed"},
      {"run1.txt", "run1.txt", host_.Root()},
      {"/run1.txt", "run1.txt", ""},
      {"/data/", "", "/data"}};
  for (const auto& [path, name, folder] : cases) {
    Files files;
    SetCurrentFile(host_, files, path);
    EXPECT_EQ(files.currentFileName, name);
    EXPECT_EQ(files.lastUsedName, name);
    EXPECT_EQ(files.currentFolder, folder);
    EXPECT_EQ(files.lastUsedFolder, folder);
  }
}

TEST_F(LinuxHostTest, OnlyCaseBlindPathsAreLoweredForTheCommandLine) {
  EXPECT_EQ(CommandLinePath("C:\\Data\\Run1.TXT", '\\'), "c:\\data\\run1.txt");
  EXPECT_EQ(CommandLinePath("/Data/Run1.TXT", '/'), "/Data/Run1.TXT");
}

TEST_F(LinuxHostTest, SystemErrorsMapToTheirNumbers) {
  const std::pair<int, int> cases[] = {{EIO, 71},    {ENODEV, 68}, {ENOENT, 53}, {ENOTDIR, 76},
                                       {EACCES, 70}, {ENOSPC, 61}, {EISDIR, 75}};
  for (const auto& [system, number] : cases) {
    EXPECT_EQ(FromSystemError(system).number, number) << system;
  }
  EXPECT_EQ(FromSystemError(ENOENT, 76).number, 76);
  EXPECT_EQ(MakeRunTimeError(62).description, "Input past end of file");
}

}  // namespace
}  // namespace polefit::testing

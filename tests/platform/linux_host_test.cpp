#include "platform/linux_host.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "platform/console_host.h"
#include "platform/file_checks.h"
#include "platform/paths.h"
#include "platform/pattern.h"
#include "platform/temporary_folder.h"

namespace polefit {
namespace {

using testing::TemporaryFolder;
using testing::WriteBytes;

class LinuxHostTest : public ::testing::Test {
 protected:
  void SetUp() override {
    former_ = host_.CurrentFolder();
    host_.ChangeFolder(folder_.Path());
    host_.MakeFolder("User");
    WriteBytes("Ex-a.12", "");
    WriteBytes("b[1].txt", "");
  }
  void TearDown() override { host_.ChangeFolder(former_); }

  TemporaryFolder folder_;
  std::string former_;
  ConsoleHost host_{folder_.File("registry.reg")};
};

TEST_F(LinuxHostTest, FileExistsKnowsNamesAndPatterns) {
  const std::pair<std::string, bool> cases[] = {
      {"Ex-a.12", true},      {"ex-a.12", false},
      {"Ex-?.1*", true},      {"*.txt", true},
      {"*.*", true},          {std::string(300, 'n'), false},
      {"*.bin", false},       {"User", false},
      {"U*", false},          {"b[1].txt", true},
      {"b[1]*", true},        {folder_.File("*"), true},
      {"no/*", false},        {"", false},
      {"no/x", false},        {"Ex-a.12/x", false},
      {folder_.Path(), false}};
  for (const auto& [path, expected] : cases) EXPECT_EQ(FileExists(host_, path), expected) << path;
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

TEST_F(LinuxHostTest, DirExistsLooksForTheFolderItself) {
  EXPECT_TRUE(dirExists(host_, "User"));
  EXPECT_TRUE(dirExists(host_, folder_.Path()));
  EXPECT_FALSE(dirExists(host_, "Ex-a.12"));
  EXPECT_FALSE(dirExists(host_, "none"));
}

TEST_F(LinuxHostTest, APathIsSplitAtTheLastOfEitherSeparator) {
  const std::string here = host_.CurrentFolder();
  const std::tuple<const char*, const char*, std::string> cases[] = {
      {"/data/run1.txt", "run1.txt", "/data"},
      {"C:\\data\\run1.txt", "run1.txt", "C:\\data"},
      {"C:\\data/mixed\\x", "x", "C:\\data/mixed"},
      {"run1.txt", "run1.txt", here},
      {"/run1.txt", "run1.txt", ""},
      {"/data/", "", "/data"}};
  for (const auto& [path, name, expected] : cases) {
    std::string folder;
    EXPECT_EQ(SplitPath(host_, path, folder), name);
    EXPECT_EQ(folder, expected) << path;
  }
  FileState files;
  SetCurrentFile(host_, files, "Start Up Values");
  EXPECT_EQ(files.lastUsedName, "Start Up Values");
  EXPECT_EQ(files.lastUsedFolder, here);
}

TEST_F(LinuxHostTest, OnlyCaseBlindPathsAreLoweredForTheCommandLine) {
  EXPECT_EQ(CommandLinePath("C:\\Data\\Run1.TXT", '\\'), "c:\\data\\run1.txt");
  EXPECT_EQ(CommandLinePath("/Data/Run1.TXT", '/'), "/Data/Run1.TXT");
}

TEST_F(LinuxHostTest, SystemErrorsMapToTheirNumbers) {
  const std::pair<int, int> cases[] = {{ENOMEDIUM, 71}, {EIO, 71},     {ENODEV, 68}, {ENXIO, 68},
                                       {ENOENT, 53},    {ENOTDIR, 76}, {EACCES, 70}, {EPERM, 70},
                                       {EROFS, 70},     {ENOSPC, 61},  {EDQUOT, 61}, {EISDIR, 75}};
  for (const auto& [system, number] : cases) {
    EXPECT_EQ(FromSystemError(system).number, number) << system;
  }
  EXPECT_EQ(FromSystemError(ENOENT, 76).number, 76);
  EXPECT_EQ(MakeRunTimeError(62).description, "Input past end of file");
}

}  // namespace
}  // namespace polefit

#include "platform/linux/linux_host.h"

#include <gmock/gmock.h>

#include <cerrno>

#include "base/pattern.h"
#include "platform/file_checks.h"
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

TEST_F(LinuxHostTest, PatternsStandForCharacters) {
  const std::tuple<const char*, const char*, bool> cases[] = {
      {"é.q", "?.q", true},     {"é.q", "??.q", false}, {"abcab", "*ab", true},
      {"abcab", "a*b*b", true}, {"abc", "a*d", false},  {"Makefile", "*.*", true},
      {"x", "", false},         {"", "**", true},       {"a*", "a\\*", false}};
  for (const auto& [name, pattern, fits] : cases) {
    EXPECT_EQ(FitsPattern(name, pattern), fits) << name << " " << pattern;
  }
}

TEST_F(LinuxHostTest, ErrorsOfTheLookUpsAreReportedUnderTheirNames) {
  host_.Fail("LookUpFile", 68);
  host_.Fail("LookUpFolder", 68);
  host_.AnswerBox(Answer::ok, Answer::ok);
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
}  // namespace polefit::testing

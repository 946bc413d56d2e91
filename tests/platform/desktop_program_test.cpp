#include "platform/desktop_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/detached_process.h"
#include "platform/restart_entry.h"
#include "platform/run_time_error.h"
#include "platform/temporary_folder.h"

namespace polefit {
namespace {

using ::testing::ElementsAre;
using testing::FileBytes;
using ::testing::HasSubstr;
using testing::WriteBytes;
using Words = std::vector<std::string>;

class DesktopTest : public ::testing::Test {
 protected:
  DesktopTest() {
    namespace fs = std::filesystem;
    for (const char* const folder : {"config", "home/applications", "system/applications"}) {
      fs::create_directories(folder_.File(folder));
    }
    ::setenv("XDG_CONFIG_HOME", folder_.File("config").c_str(), 1);
    ::setenv("XDG_CONFIG_DIRS", folder_.File("none").c_str(), 1);
    ::setenv("XDG_DATA_HOME", folder_.File("home").c_str(), 1);
    ::setenv("XDG_DATA_DIRS", folder_.File("system").c_str(), 1);
  }

  void Install(const std::string& id, const std::string& lines) {
    WriteBytes(folder_.File("system/applications/" + id), "[Desktop Entry]\n" + lines);
  }

  bool WaitForFile(const std::string& path) {
    for (int i = 0; i < 200 && FileBytes(path).empty(); ++i) ::usleep(10000);
    return !FileBytes(path).empty();
  }

  testing::TemporaryFolder folder_;
};

TEST_F(DesktopTest, TheUsersChoiceComesFirstAndWhatCannotRunIsPassedOver) {
  const std::string file = "/data/a b.txt";
  EXPECT_FALSE(DesktopProgramFor("text/plain", file));
  Install("terminal.desktop", "Exec=/bin/ls %f\nTerminal=true\n");
  Install("gone.desktop", "Exec=/no/such/program %f\n");
  Install("other.desktop", "Exec=cat %F\n[Desktop Action New]\nExec=wrong\n");
  Install("chosen.desktop", "Exec=sh -c \"echo \\\\$1\" %U --new\n");
  WriteBytes(folder_.File("system/applications/mimeinfo.cache"),
             "[MIME Cache]\ntext/plain=terminal.desktop;gone.desktop;other.desktop;\n");
  EXPECT_EQ(DesktopProgramFor("text/plain", file), (Words{"cat", file}));
  WriteBytes(folder_.File("config/mimeapps.list"),
             "[Added Associations]\ntext/plain=other.desktop\n"
             "[Default Applications]\ntext/plain=chosen.desktop\n");
  EXPECT_EQ(DesktopProgramFor("text/plain", file), (Words{"sh", "-c", "echo $1", file, "--new"}));
  EXPECT_FALSE(DesktopProgramFor("application/rtf", file));
}

TEST_F(DesktopTest, AnExecLineGivesItsWordsBack) {
  const Words words = {"/opt/it's \"here\"/x", "a\\b", "$HOME `ls`", "100%f", "", "Größe;|&<>"};
  Words expected = words;
  expected.emplace_back("target");
  EXPECT_EQ(ExecWords(ExecLine(words), "target"), expected);
  EXPECT_EQ(ExecWords("x --file=%f", "t"), (Words{"x", "--file=t"}));
  EXPECT_THAT(ExecWords("prog %i %c -f %f --again %f", "t"),
              ElementsAre("prog", "-f", "t", "--again"));
}

TEST_F(DesktopTest, TheAutostartEntryRunsTheProgramOnceAndRemovesItself) {
  const std::string program = folder_.File("it's a $program");
  WriteBytes(program, "#!/bin/sh\necho ran > '" + folder_.File("ran") + "'\n");
  ::chmod(program.c_str(), 0755);
  WriteAutostartEntry(program);
  WriteAutostartEntry(program);
  const std::string entry = FileBytes(AutostartEntryPath());
  EXPECT_THAT(entry, HasSubstr("[Desktop Entry]\nType=Application\n"));
  const std::size_t exec = entry.find("\nExec=") + 6;
  StartDetached(ExecWords(entry.substr(exec, entry.find('\n', exec) - exec), ""));
  EXPECT_TRUE(WaitForFile(folder_.File("ran")));
  EXPECT_FALSE(std::filesystem::exists(AutostartEntryPath()));
}

TEST_F(DesktopTest, ADetachedProgramLeadsItsOwnGroupAndWritesItsOutput) {
  const std::string log = folder_.File("log");
  const long id = StartDetached({"sh", "-c", "echo \"$1\"; sleep 60 & wait", "sh", "a  b"}, log);
  ASSERT_TRUE(WaitForFile(log));
  EXPECT_EQ(FileBytes(log), "a  b\n");
  EXPECT_EQ(::getpgid(static_cast<pid_t>(id)), id);
  EXPECT_TRUE(StartOfProcess(id));
  EndGroup(id, false);
  WaitForEnd(id);
  EXPECT_FALSE(StartOfProcess(id));
}

TEST_F(DesktopTest, AProgramThatCannotBeStartedIsNamed) {
  WriteBytes(folder_.File("plain"), "no program");
  const std::pair<std::string, int> cases[] = {
      {folder_.File("none"), error_number::kFileNotFound},
      {folder_.File("plain"), error_number::kPermissionDenied}};
  for (const auto& [program, number] : cases) {
    try {
      StartDetached({program});
      ADD_FAILURE() << program;
    } catch (const RunTimeError& error) {
      EXPECT_EQ(error.number, number);
      EXPECT_THAT(error.description, HasSubstr(": " + program));
    }
  }
}

}  // namespace
}  // namespace polefit

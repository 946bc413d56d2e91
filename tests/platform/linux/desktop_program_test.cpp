#include "platform/linux/desktop_program.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "base/error_of.h"
#include "platform/linux/detached_process.h"
#include "platform/linux/restart_entry.h"
#include "platform/temporary_folder.h"

namespace polefit::testing {
namespace {

using Words = std::vector<std::string>;

class DesktopTest : public ::testing::Test {
 protected:
  DesktopTest() {
    ::setenv("XDG_CONFIG_HOME", folder_.File("config").c_str(), 1);
    ::setenv("XDG_CONFIG_DIRS", folder_.File("none").c_str(), 1);
    ::setenv("XDG_DATA_HOME", folder_.File("home").c_str(), 1);
    ::setenv("XDG_DATA_DIRS", folder_.File("system").c_str(), 1);
    ::setenv("XDG_CURRENT_DESKTOP", "Own:XFCE", 1);
  }

  void Install(const std::string& id, const std::string& lines) {
    WriteBytes(folder_.File("system/applications/" + id), "[Desktop Entry]\n" + lines);
  }
  /// Makes a list of the user's choices with `id` for plain text.
  void Choose(const std::string& list, const std::string& id) {
    const std::string added = "[Added Associations]\ntext/plain=gone.desktop\n";
    WriteBytes(folder_.File("config/" + list), added + "[Default Applications]\ntext/plain=" + id);
  }

  /// What stands in a file once it has been written. The bound only ends a test that has failed.
  std::string WaitFor(const std::string& path) {
    for (int i = 0; i < 6000 && FileBytes(path).empty(); ++i) ::usleep(10000);
    return FileBytes(path);
  }

  TemporaryFolder folder_;
};

TEST_F(DesktopTest, TheUsersChoiceComesFirstAndWhatCannotRunIsPassedOver) {
  const std::string file = "/data/a b.txt";
  const auto program = [&] { return DesktopProgramFor("text/plain", file).value_or(Words{}); };
  EXPECT_EQ(program(), Words{});
  Install("terminal.desktop", "Exec=/bin/ls %f\nTerminal=true\n");
  Install("gone.desktop", "Exec=/no/such/program %f\n");
  Install("other.desktop", "Exec=cat %F\n[Desktop Action New]\nExec=wrong\n");
  Install("chosen.desktop", "Exec=sh -c \"echo \\\\$1\" %U --new\n");
  WriteBytes(folder_.File("system/applications/mimeinfo.cache"),
             "[MIME Cache]\ntext/plain=terminal.desktop;gone.desktop;other.desktop;\n");
  EXPECT_EQ(program(), (Words{"cat", file}));
  Choose("mimeapps.list", "chosen.desktop");
  EXPECT_EQ(program(), (Words{"sh", "-c", "echo $1", file, "--new"}));
  // The choices made for a desktop come before those for all.
  Choose("xfce-mimeapps.list", "other.desktop");
  EXPECT_EQ(program(), (Words{"cat", file}));
  Choose("own-mimeapps.list", "chosen.desktop");
  EXPECT_EQ(program().front(), "sh");
  EXPECT_FALSE(DesktopProgramFor("application/rtf", file));
}

TEST_F(DesktopTest, AnExecLineGivesItsWordsBack) {
  Words words = {"/opt/it's \"here\"/x", "a\\b", "$HOME `ls`", "100%f", "", "Größe;|&<>"};
  const std::string line = ExecLine(words);
  words.emplace_back("target");
  EXPECT_EQ(ExecWords(line, "target"), words);
  EXPECT_EQ(ExecLine({"$`"}), R"("\\$\\`")");
  EXPECT_EQ(ExecWords("x --file=%f", "t"), (Words{"x", "--file=t"}));
  EXPECT_EQ(ExecWords("prog %i %c -f %f --again %f", "t"), (Words{"prog", "-f", "t", "--again"}));
}

TEST_F(DesktopTest, TheAutostartEntryRunsTheProgramOnceAndRemovesItself) {
  const std::string program = folder_.File("it's a $program");
  WriteBytes(program, "#!/bin/sh\necho ran > '" + folder_.File("ran") + "'\n");
  ::chmod(program.c_str(), 0755);
  WriteAutostartEntry(program);
  const std::string entry = FileBytes(AutostartEntryPath());
  WriteAutostartEntry(program);
  EXPECT_EQ(FileBytes(AutostartEntryPath()), entry);
  EXPECT_THAT(entry, ::testing::StartsWith("[Desktop Entry]\nType=Application\n"));
  const std::size_t exec = entry.find("\nExec=") + 6;
  StartDetached({.words = ExecWords(entry.substr(exec, entry.find('\n', exec) - exec), "")});
  EXPECT_EQ(WaitFor(folder_.File("ran")), "ran\n");
  EXPECT_EQ(FileBytes(AutostartEntryPath()), "");
}

TEST_F(DesktopTest, ALineBreakInANameBringsNoLineIntoTheEntryAndWhatCannotStandInOneIsRefused) {
  const std::string program = folder_.File("x\nExec=touch pwned\n/polefit");
  WriteAutostartEntry(program);
  const std::string entry = FileBytes(AutostartEntryPath());
  EXPECT_EQ(std::count(entry.begin(), entry.end(), '\n'), 5);
  const std::size_t exec = entry.find("\nExec=") + 6;
  EXPECT_EQ(ExecWords(entry.substr(exec, entry.find('\n', exec) - exec), "").at(4), program);
  const std::string validate = "desktop-file-validate '" + AutostartEntryPath() + "'";
  if (std::system("command -v desktop-file-validate >/dev/null") == 0) {
    EXPECT_EQ(std::system(validate.c_str()), 0) << entry;
  }
  for (const char* const name : {"/a\x01", "/a\x7F", "/a\xFF"}) {
    EXPECT_EQ(ErrorOf([name] { WriteAutostartEntry(name); }), 75);
  }
}

TEST_F(DesktopTest, ADetachedProgramLeadsItsOwnGroupAndWritesItsOutput) {
  const std::string log = folder_.File("log");
  const ProcessName process = StartDetached(
      {.words = {"sh", "-c", "echo \"$1\"; sleep 60 & wait", "sh", "a  b"}, .output = log});
  const long id = process.id;
  EXPECT_EQ(WaitFor(log), "a  b\n");
  ASSERT_EQ(::getpgid(static_cast<pid_t>(id)), id);
  ASSERT_TRUE(LookAtProcess(id));
  EXPECT_EQ(LookAtProcess(id)->start, process.start);
  EXPECT_FALSE(LookAtProcess(id)->isKept);
  EndProcessGroup(id, false);
  WaitForEnd(id);
  EXPECT_FALSE(LookAtProcess(id));
}

TEST_F(DesktopTest, AKeeperTellsHowAProgramEndedAndHandsItNoOpenFile) {
  const std::string ending = folder_.File("ending");
  const std::string log = folder_.File("log");
  const int held = ::open("/dev/null", O_RDONLY);  // not closed by an exec
  const std::tuple<const char*, bool, int> cases[] = {
      {"for n in 3 4 5 6 7 8 9; do test -e /proc/$$/fd/$n && echo $n; done; exit 3", false, 3},
      {"kill -SEGV $$", true, SIGSEGV}};
  for (const auto& [script, isSignal, number] : cases) {
    std::filesystem::remove(ending);
    const ProcessName process =
        StartDetached({.words = {"sh", "-c", script}, .output = log, .ending = ending});
    EXPECT_EQ(EndingIn(WaitFor(ending)), (ProcessEnding{process.id, isSignal, number})) << script;
    EXPECT_EQ(FileBytes(log), "");
  }
  ::close(held);
  const ProcessName process =
      StartDetached({.words = {"sleep", "60"}, .output = {}, .ending = ending});
  ASSERT_TRUE(LookAtProcess(process.id));
  EXPECT_TRUE(LookAtProcess(process.id)->isKept && LookAtProcess(process.id)->isOwn);
  EndProcessGroup(process.id, true);
}

TEST_F(DesktopTest, AProgramThatCannotBeStartedIsNamed) {
  WriteBytes(folder_.File("plain"), "no program");
  for (const auto& [name, number] : {std::pair("none", 53), std::pair("plain", 70)}) {
    const std::string path = folder_.File(name);
    const RunTimeError error = ThrownBy([&] { StartDetached({.words = {path}}); });
    EXPECT_EQ(error.number, number) << name;
    EXPECT_EQ(error.path, path);
  }
}

}  // namespace
}  // namespace polefit::testing

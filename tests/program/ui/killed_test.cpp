#include <gmock/gmock.h>

#include <QProcess>
#include <iostream>
#include <random>
#include <thread>

#include "program/ui/installed_program.h"

namespace polefit::testing {
namespace {

constexpr const char* kVictimsBase = "POLEFIT_VICTIMS_BASE";

/// The whole program as a process of its own, this test once more, so that it can be killed.
struct KilledTest : InstalledProgram {
  KilledTest() {
    if (qEnvironmentVariableIsSet(kVictimsBase)) SaveAndSubmitWithoutEnd();
  }
  /// The first and the last answers of the file differ each time.
  static void Do(const char* command, const char* answer) {
    SetText("tmin", answer);
    SetText("Note1", answer);
    Choose(command);
  }
  [[noreturn]] void SaveAndSubmitWithoutEnd() {
    base = qgetenv(kVictimsBase).toStdString();
    Start(Installed("User/run1.txt"));
    while (true) {
      std::cout << "ready" << std::endl;
      Do("mnuFileSave", "1");
      answers.Press(QMessageBox::No);
      Do("mnuFileSubmit", "2");
      Verdict();
    }
  }
  void StartAndKillAfter(std::chrono::milliseconds time) const {
    QProcess victim;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(kVictimsBase, base.c_str());
    environment.insert("TMPDIR", root.Path().c_str());
    victim.setProcessEnvironment(environment);
    victim.start(QApplication::applicationFilePath(), {"--gtest_filter=KilledTest.*"});
    QByteArray said;
    while (!said.contains("ready") && victim.waitForReadyRead()) said += victim.readAll();
    ASSERT_TRUE(said.contains("ready")) << said.toStdString();
    std::this_thread::sleep_for(time);
    victim.kill();
    victim.waitForFinished();
    EXPECT_EQ(victim.exitStatus(), QProcess::CrashExit);
  }
};

TEST_F(KilledTest, TheFormerOrTheNewFileIsWholeWheneverTheProgramIsKilled) {
  InstallSolver("say converged");
  // Some buffers long, so that kills fall between two of them.
  const std::string path = MakeFile("run1.txt", "1", 6000);
  // The first line holds the time.
  const auto bytes = [](const std::string& file) {
    const std::string all = FileBytes(file);
    return all.substr(std::min(all.find('\n'), all.size()));
  };
  Start(path);
  Do("mnuFileSave", "1");
  const std::string one = bytes(path);
  Do("mnuFileSave", "2");
  const auto isWhole = ::testing::AnyOf(one, bytes(path));
  std::mt19937 random(20231);
  std::uniform_int_distribution<> milliseconds(0, 399);
  int interrupted = 0;
  for (int kill = 0; kill < 20 || (interrupted < 3 && kill < 200); ++kill) {
    StartAndKillAfter(std::chrono::milliseconds(milliseconds(random)));
    const bool isNamedWhole = ::testing::Value(bytes(path), isWhole);
    EXPECT_TRUE(isNamedWhole || ::testing::Value(bytes(path + "~"), isWhole)) << kill;
    if (!isNamedWhole) ++interrupted;
    if (std::filesystem::exists(path + "~")) std::filesystem::rename(path + "~", path);
  }
  EXPECT_GE(interrupted, 3) << "the kills missed the moments of writing";
}

}  // namespace
}  // namespace polefit::testing

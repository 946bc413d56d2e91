#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QTest>
#include <filesystem>
#include <optional>
#include <set>
#include <stdexcept>

#include "platform/linux/console_host.h"
#include "platform/temporary_folder.h"
#include "program/ui/answering.h"
#include "program/ui/session.h"
#include "responsefile/writer.h"

namespace polefit::testing {

/// The program's own host, but installed where a test wants it.
struct InstalledHost final : ProgramHost {
  explicit InstalledHost(std::string own) : folder(std::move(own)) {}
  std::string OwnFolder() override { return folder; }
  const std::string folder;
};

/// The whole program on the real host: installed in a temporary folder with a solver that is a
/// shell script, on a desktop that has no programs and no settings yet.
struct InstalledProgram : ::testing::Test {
  InstalledProgram() {
    const std::string desktop = root.File("desktop");
    for (const char* const name :
         {"CONFIG_HOME", "CONFIG_DIRS", "DATA_HOME", "DATA_DIRS", "STATE_HOME", "RUNTIME_DIR"}) {
      qputenv((std::string("XDG_") + name).c_str(), desktop.c_str());
    }
    Install("base");
  }
  ~InstalledProgram() override {
    session.reset();
    std::filesystem::current_path("/");
    // Once asked to quit, Qt opens no dialog until its own loop has run and ended again.
    QTimer::singleShot(0, [] { QApplication::exit(); });
    QApplication::exec();
  }

  void Install(const std::string& baseName) {
    base = root.File(baseName);
    std::filesystem::create_directories(Installed("User"));
    WriteBytes(base + "/DOSstart.cvx", "start\r\n");
    WriteBytes(Installed("Polefit.ini"), "h\r\n1\r\n\r\n");
  }
  std::string Installed(const std::string& name) const { return base + "/Tessel.hz/" + name; }

  /// Makes the solver: a shell script that runs in the program folder and has some words of its
  /// own for what solvers do.
  void InstallSolver(const std::string& script) {
    WriteBytes(Installed("pfit"),
               "#!/bin/sh\nread=\"$2/$1\"\ncd \"$3/Tessel.hz\"\n"
               "report() { printf 'the report\\r\\n' > '~pft-out.txt'; }\n"
               "values() { sed 's/^76.7/80.1/' \"$read\" > last-run.ini; }\n"
               "say() { echo \"pfit: $*\"; }\n" +
                   script);
    std::filesystem::permissions(Installed("pfit"), std::filesystem::perms::all);
  }

  /// A file in the "User" folder with some passband points and the tmin answer given.
  std::string MakeFile(const std::string& name, const std::string& tmin = "76.7",
                       std::int16_t points = 1) {
    ResponseRecord record;
    record.Slot(slot::kTmin) = tmin;
    record.nFreqPoints = points;
    record.passband.Resize(points + 1);
    for (int i = 0; i < 4 * points; ++i) record.passband.At(1 + i / 4, 1 + i % 4) = "1";
    ConsoleHost writing;
    WriteResponseFile(writing, record, {Installed("User"), name});
    return Installed("User/" + name);
  }

  void Start(const std::string& file = {}) {
    session.reset();
    session.emplace(host.emplace(base + "/Tessel.hz"), file);
    session->Start();
  }

  /// The titles of the windows that are up.
  static std::set<std::string> Titles() {
    std::set<std::string> titles;
    for (const QWidget* const window : QApplication::topLevelWidgets()) {
      if (window->isVisible()) titles.insert(window->windowTitle().toStdString());
    }
    return titles;
  }
  /// The part with this name of a window that is up. A name that is not there throws, so that a
  /// misspelt one cannot pass.
  template <typename Part = QWidget>
  static Part& The(const QString& name) {
    for (const QWidget* const window : QApplication::topLevelWidgets()) {
      Part* const part = window->isVisible() ? window->findChild<Part*>(name) : nullptr;
      if (part != nullptr) return *part;
    }
    throw std::out_of_range("no window that is up has a " + name.toStdString());
  }
  static std::string TextOf(const QString& name) {
    return The(name).property("text").toString().toStdString();
  }
  static void SetText(const QString& name, const char* text) { The<QLineEdit>(name).setText(text); }
  /// True when the part has the focus of its window, or gets it with the window.
  static bool HasFocus(const QString& name) {
    return The(name).window()->focusWidget() == &The(name);
  }
  static void Click(const QString& button) { QTest::mouseClick(&The(button), Qt::LeftButton); }
  static void Choose(const QString& action) { The<QAction>(action).trigger(); }
  /// Waits for what must come. The bound ends a test that has failed, on a slow machine too.
  static bool Comes(const std::function<bool()>& isThere) {
    return QTest::qWaitFor(isThere, 60000);
  }
  /// Waits for the end of the run and gives its verdict.
  static std::string Verdict() {
    const auto isThere = [] { return !TextOf("lblVerdict").empty(); };
    EXPECT_TRUE(Comes(isThere)) << "still running";
    return TextOf("lblVerdict");
  }

  TemporaryFolder root;
  std::string base;
  Answering answers;
  std::optional<InstalledHost> host;
  std::optional<Session> session;
};

}  // namespace polefit::testing

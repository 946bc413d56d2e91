#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QAction>
#include <QApplication>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "demos/ui/answering.h"
#include "demos/ui/session.h"
#include "platform/temporary_folder.h"
#include "platform/ui/qt_host.h"

namespace polefit::testing {

/// The program's own host, but installed where a test wants it.
class InstalledHost final : public QtHost {
 public:
  explicit InstalledHost(std::string folder) : folder_(std::move(folder)) {}
  std::string OwnFolder() override { return folder_; }

 private:
  std::string folder_;
};

/// The whole program on the real host: installed in a temporary folder with a solver that is a
/// shell script, on a desktop that has no programs and no settings yet.
class InstalledProgram : public ::testing::Test {
 protected:
  /// `base` is the name of the base folder.
  explicit InstalledProgram(const std::string& base = "base") : base_(root_.File(base)) {
    namespace fs = std::filesystem;
    fs::create_directories(Installed("User"));
    WriteBytes(base_ + "/DOSstart.cvx", "start\r\n");
    qputenv("XDG_CONFIG_HOME", root_.File("config").c_str());
    for (const char* const name : {"XDG_DATA_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_DIRS"}) {
      qputenv(name, root_.File("none").c_str());
    }
    WriteBytes(Installed("Polefit.ini"), "h\r\n1\r\n\r\n");
  }
  ~InstalledProgram() override {
    End();
    std::filesystem::current_path("/");
    // Once asked to quit, Qt opens no dialog until its own loop has run and ended again.
    QTimer::singleShot(0, [] { QApplication::exit(); });
    QApplication::exec();
  }

  std::string Installed(const std::string& name) const { return base_ + "/Tessel.hz/" + name; }

  /// Makes the solver: a shell script that gets the four words and runs in the program folder.
  void InstallSolver(const std::string& script) {
    WriteBytes(Installed("pfit"), "#!/bin/sh\nread=\"$2/$1\"\ncd \"$3/Tessel.hz\"\n" + script);
    ::chmod(Installed("pfit").c_str(), 0755);
  }

  void Start(const std::string& file = {}) {
    End();
    host_ = std::make_unique<InstalledHost>(base_ + "/Tessel.hz");
    session_ = std::make_unique<Session>(*host_, file);
    session_->Start();
  }
  void End() {
    session_.reset();
    host_.reset();
  }

  /// A top-level window by its name, or nullptr.
  static QWidget* Window(const QString& name) {
    for (QWidget* const window : QApplication::topLevelWidgets()) {
      if (window->objectName() == name && window->isVisible()) return window;
    }
    return nullptr;
  }
  template <typename Widget>
  static Widget* In(const QString& window, const QString& name) {
    QWidget* const found = Window(window);
    return found == nullptr ? nullptr : found->findChild<Widget*>(name);
  }
  static void Click(const QString& window, const QString& button) {
    auto* const found = In<QAbstractButton>(window, button);
    ASSERT_NE(found, nullptr) << button.toStdString();
    QTest::mouseClick(found, Qt::LeftButton);
  }
  static void Choose(const QString& action) {
    auto* const found = In<QAction>("frmMain", action);
    ASSERT_NE(found, nullptr) << action.toStdString();
    found->trigger();
  }
  static std::string TextOf(const QString& window, const QString& name) {
    const QWidget* const found = In<QWidget>(window, name);
    return found == nullptr ? "none" : found->property("text").toString().toStdString();
  }
  static void SetText(const QString& name, const char* text) {
    auto* const box = In<QLineEdit>("frmMain", name);
    ASSERT_NE(box, nullptr);
    box->setText(text);
  }
  /// Waits for the end of the run and gives its verdict.
  static std::string Verdict() {
    const bool ended =
        QTest::qWaitFor([] { return !TextOf("frmRun", "lblVerdict").empty(); }, 10000);
    return ended ? TextOf("frmRun", "lblVerdict") : "still running";
  }

  TemporaryFolder root_;
  std::string base_;
  Answering answers_;
  std::unique_ptr<InstalledHost> host_;
  std::unique_ptr<Session> session_;
};

}  // namespace polefit::testing

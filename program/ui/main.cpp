#include <QApplication>
#include <QIcon>
#include <string>
#include <vector>

#include "platform/linux/console_host.h"
#include "platform/linux/process_start.h"
#include "platform/linux/restart_entry.h"
#include "platform/paths.h"
#include "platform/places.h"
#include "platform/ui/termination.h"
#include "program/console.h"
#include "program/ui/plot_command.h"
#include "program/ui/program_host.h"
#include "program/ui/session.h"
#include "widgets/program_style.h"

namespace {

int RunWindows(int argc, char** argv, const std::string& fileToOpen) {
  QApplication::setDesktopFileName("polefit");
  QApplication::setApplicationName("Polefit");
  QApplication::setApplicationVersion(POLEFIT_VERSION);
  const QApplication application(argc, argv);
  QApplication::setStyle(new polefit::ProgramStyle);
  QApplication::setWindowIcon(QIcon::fromTheme("polefit"));
  // Windows come and go; the program ends where its own way out says so.
  QApplication::setQuitOnLastWindowClosed(false);
  polefit::ProgramHost host;
  polefit::Session session(host, fileToOpen);
  polefit::WithdrawAutostartEntry();  // the program has come back, by whatever way
  const polefit::Termination termination([&session] { session.End(); });
  session.Start();
  return session.HasEnded() ? 0 : QApplication::exec();
}

/// A window shows one file: each other one gets a program of its own. Start-up changes the current
/// folder, so a relative name is made whole before it.
std::string FirstOf(polefit::Host& host, const std::vector<std::string>& files) {
  if (files.empty()) return {};
  const std::string program = polefit::Places::Of(host, {}, host.OwnFolder()).FrontEnd();
  for (std::size_t i = 1; i < files.size(); ++i) {
    host.StartProcess({.words = {program, "--", polefit::WholePath(host, files[i])}});
  }
  return polefit::WholePath(host, files.front());
}

int Run(int argc, char** argv) {
  polefit::ConsoleHost console;
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  const polefit::CommandLineResult result = polefit::RunCommandLine(console, arguments);
  if (result.exitCode) return *result.exitCode;
  if (!result.window.fileToPlot.empty()) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QApplication::setStyle(new polefit::ProgramStyle);
    return polefit::PlotFile(console, result.window.fileToPlot, result.window.picture);
  }
  return RunWindows(argc, argv, FirstOf(console, result.window.filesToOpen));
}

}  // namespace

int main(int argc, char** argv) {
  polefit::PrepareProcess();
  return polefit::RunGuarded([&] { return Run(argc, argv); });
}

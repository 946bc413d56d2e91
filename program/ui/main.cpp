#include <QApplication>
#include <QIcon>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "platform/linux/console_host.h"
#include "platform/linux/process_start.h"
#include "platform/linux/restart_entry.h"
#include "platform/paths.h"
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
  // Start-up changes the current folder, so a relative name is made whole before it.
  const std::string& file = result.window.fileToOpen;
  return RunWindows(argc, argv, file.empty() ? file : polefit::WholePath(console, file));
}

int Fail(const std::string& reason) {
  std::cerr << "polefit: " << reason << '\n';
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  polefit::PrepareProcess();
  try {
    return Run(argc, argv);
  } catch (const polefit::RunTimeError& error) {
    return Fail("error " + std::to_string(error.number) + ": " + error.description);
  } catch (const std::exception& error) {
    return Fail(error.what());
  }
}

#include "platform/ui/qt_host.h"

#include <QCoreApplication>
#include <QEvent>
#include <QSettings>
#include <QUrl>

#include "platform/file_checks.h"
#include "platform/linux/desktop_program.h"
#include "platform/linux/detached_process.h"
#include "platform/linux/restart_entry.h"
#include "platform/places.h"
#include "platform/ui/file_dialog.h"
#include "platform/ui/message_box.h"
#include "platform/ui/plain_viewer.h"

namespace polefit {

namespace {

constexpr long kNoProcess = 0;

/// Opens the file with the desktop's program for the first of these types that has one, or in a
/// window of our own.
long OpenFile(Host& host, const std::string& path, const std::vector<std::string>& mimeTypes) {
  for (const std::string& type : mimeTypes) {
    if (const auto words = DesktopProgramFor(type, path))
      return StartDetached({.words = *words}).id;
  }
  ShowPlainViewer(path, host.ReadFile(path));
  return kNoProcess;
}

/// "mailto:somebody?subject=some words" for the desktop's own mail client.
long StartMail(const std::string& address) {
  const std::string url = QUrl(QString::fromStdString(address)).toEncoded().toStdString();
  const auto words = DesktopProgramFor("x-scheme-handler/mailto", url);
  if (!words) {
    throw RunTimeError{error_number::kFileNotFound,
                       "File not found: the desktop has no mail program."};
  }
  return StartDetached({.words = *words}).id;
}

/// Refuses every request to close a window.
class KeptOpen final : public QObject {
 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() != QEvent::Close) return false;
    event->ignore();
    return true;
  }
};

}  // namespace

QtHost::QtHost() {
  // The file dialog keeps settings of its own, which would go into a file of all Qt programs.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                     QString::fromStdString(LinuxHost::ConfigurationFolder()));
}

Reply QtHost::MessageBox(const std::string& text, int style, const std::string& title) {
  return ShowMessageBox(text, style, title);
}

std::size_t QtHost::Ask(const Choice& choice) {
  return ShowChoice(choice);
}

void QtHost::ShowOpen(CommonDialog& dialog) {
  AskForFile(dialog, QFileDialog::AcceptOpen);
}

void QtHost::ShowSave(CommonDialog& dialog) {
  AskForFile(dialog, QFileDialog::AcceptSave);
}

long QtHost::StartProgram(const Command& command) {
  switch (command.kind) {
    case CommandKind::importRegistryScript:
      WriteAutostartEntry(Places::Of(*this, {}, OwnFolder()).FrontEnd());
      return kNoProcess;
    case CommandKind::copyFile:
      ReplaceFile(command.target, ReadFile(command.object), Readers::usual);
      return kNoProcess;
    case CommandKind::editText:
      return OpenFile(*this, command.object, {"text/plain"});
    case CommandKind::writeMail:
      return StartMail(command.object);
    case CommandKind::runSolver:
      break;
  }
  throw MakeRunTimeError(error_number::kFileNotFound);
}

void QtHost::ShellExecuteA(const std::string& path) {
  if (!FileExists(*this, path)) {
    MessageBox("Cannot find '" + path + "'.", message_style::kExclamation, "Polefit");
  } else if (path.ends_with(".rtf")) {
    OpenFile(*this, path, {"application/rtf", "text/rtf"});
  } else {
    OpenFile(*this, path, {"text/plain"});
  }
}

void QtHost::WaitForSingleObject(long processId) {
  // The windows are drawn meanwhile, but take no keys, no mouse and no request to close.
  KeptOpen windows;
  QCoreApplication::instance()->installEventFilter(&windows);
  WaitForEnd(processId, [] {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                    QEventLoop::ExcludeSocketNotifiers);
  });
}

void QtHost::EndProgram() {
  throw ProgramEnded{};
}

}  // namespace polefit

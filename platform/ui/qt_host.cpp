#include "platform/ui/qt_host.h"

#include <QUrl>

#include "base/text.h"
#include "platform/file_checks.h"
#include "platform/linux/desktop_program.h"
#include "platform/linux/detached_process.h"
#include "platform/linux/restart_entry.h"
#include "platform/paths.h"
#include "platform/ui/file_dialog.h"
#include "platform/ui/message_box.h"
#include "platform/ui/plain_viewer.h"

namespace polefit {

namespace {

constexpr long kNoProcess = 0;

/// Opens the file with the desktop's program for the first of these types that has one, or in a
/// window of our own.
long OpenFile(const std::string& path, const std::vector<std::string>& mimeTypes) {
  for (const std::string& type : mimeTypes) {
    if (const auto words = DesktopProgramFor(type, path)) return StartDetached(*words);
  }
  ShowPlainViewer(path);
  return kNoProcess;
}

/// "/mailurl:mailto:somebody?subject=some words" for the desktop's own mail client.
long StartMail(const Command& command) {
  constexpr std::string_view kPrefix = "/mailurl:";
  const std::string address = command.arguments.at(0).substr(kPrefix.size());
  const std::string url = QUrl(QString::fromStdString(address)).toEncoded().toStdString();
  const auto words = DesktopProgramFor("x-scheme-handler/mailto", url);
  if (!words) {
    throw RunTimeError{error_number::kFileNotFound,
                       "File not found: the desktop has no mail program."};
  }
  return StartDetached(*words);
}

/// COMMAND.COM /C COPY source target
long StartCopy(const Command& command) {
  return StartDetached({"cp", "--", command.arguments.at(2), command.arguments.at(3)});
}

std::string BareName(const std::string& program) {
  return LowerCase(program.substr(program.find_last_of("/\\") + 1));
}

}  // namespace

Answer QtHost::MessageBox(const std::string& text, int style, const std::string& title) {
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
  const std::string name = BareName(command.program);
  if (name.ends_with(".pif")) return startSolver_(command);
  if (name == "command.com") return StartCopy(command);
  if (name == "notepad.exe") return OpenFile(command.arguments.at(0), {"text/plain"});
  if (name == "msimn.exe") return StartMail(command);
  if (name != "regedit") throw MakeRunTimeError(error_number::kFileNotFound);
  WriteAutostartEntry(JoinPath(OwnFolder(), "polefit"));
  return kNoProcess;
}

void QtHost::ShellExecuteA(const std::string& path) {
  if (!FileExists(*this, path)) {
    MessageBox("Cannot find '" + path + "'.", message_style::kExclamation, "Polefit");
  } else if (path.ends_with(".rtf")) {
    OpenFile(path, {"application/rtf", "text/rtf"});
  } else {
    OpenFile(path, {"text/plain"});
  }
}

void QtHost::WaitForSingleObject(long processId) {
  WaitForEnd(processId);
}

void QtHost::EndProgram() {
  throw ProgramEnded{};
}

}  // namespace polefit

#include "platform/linux/console_host.h"

#include <iostream>

namespace polefit {

std::string ConsoleHost::CurrentFolder() {
  try {
    return LinuxHost::CurrentFolder();
  } catch (const RunTimeError&) {
    return ".";
  }
}

Reply ConsoleHost::MessageBox(const std::string& text, int style, const std::string& title) {
  constexpr int kButtons = 0xF;
  std::cerr << title << '\n' << text << '\n';
  switch (style & kButtons) {
    case 0:
      return Reply::ok;
    case 4:
      return Reply::no;
    default:
      return Reply::cancel;
  }
}

std::size_t ConsoleHost::Ask(const Choice& choice) {
  std::cerr << choice.sentence << '\n';
  return choice.buttons.size() - 1;
}

void ConsoleHost::ShowOpen(CommonDialog& dialog) {
  dialog.fileName.clear();
  if (dialog.cancelIsError) throw MakeRunTimeError(error_number::kDialogCancelled);
}

void ConsoleHost::ShowSave(CommonDialog& dialog) {
  ShowOpen(dialog);
}

long ConsoleHost::StartProgram(const Command& /*command*/) {
  throw MakeRunTimeError(error_number::kFileNotFound);
}

void ConsoleHost::ShellExecuteA(const std::string& /*path*/) {
  throw MakeRunTimeError(error_number::kFileNotFound);
}

void ConsoleHost::WaitForSingleObject(long /*processId*/) {}

void ConsoleHost::EndProgram() {
  throw ProgramEnded{};
}

}  // namespace polefit

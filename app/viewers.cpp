#include "app/viewers.h"

#include "platform/file_checks.h"

namespace polefit {

namespace {

constexpr const char* kSupportAddress = "support@polefit.example";

}  // namespace

void ViewExampleFile(Program& program) {
  CommonDialog& dialog = program.windows.CMDialog1;
  const std::string formerFolder = dialog.initialFolder;
  dialog.initialFolder = PlacesOf(program).User();
  dialog.title = "Open an Example File for illustration";
  dialog.filter = "All Files (*.*)|*.*|Example Response Files (ex-*.*)|ex-*.*";
  dialog.filterIndex = 2;
  dialog.fileName.clear();
  dialog.cancelIsError = false;
  dialog.judge = nullptr;
  program.host.ShowOpen(dialog);
  dialog.initialFolder = formerFolder;
  if (dialog.fileName.empty()) return;
  program.host.StartProgram({"notepad.exe",
                             {dialog.fileName},
                             WindowStyle::maximised,
                             CommandKind::editText,
                             dialog.fileName});
}

void ViewLastOutput(Program& program) {
  const std::string report = PlacesOf(program).Report();
  if (FileExists(program.host, report)) {
    program.host.ShellExecuteA(report);
  } else {
    program.host.MessageBox("Try a 'Submit' command then retry this View option.",
                            message_style::kExclamation, "'~pft-out.txt' output file not found.");
  }
}

void OpenManual(Program& program) {
  program.host.ShellExecuteA(PlacesOf(program).Manual());
}

void EmailSupport(Program& program) {
  const std::string address = std::string("mailto:") + kSupportAddress +
                              "?subject=Polefit " POLEFIT_VERSION " questions/problems";
  const long client = program.host.StartProgram({"c:\\program files\\outlook express\\msimn.exe",
                                                 {"/mailurl:" + address},
                                                 WindowStyle::normal,
                                                 CommandKind::writeMail,
                                                 address});
  // Kept: the program takes no input for as long as the mail client is open.
  program.host.WaitForSingleObject(client);
}

}  // namespace polefit

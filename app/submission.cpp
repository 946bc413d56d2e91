#include "app/submission.h"

#include "app/file_commands.h"
#include "app/solver_start.h"
#include "app/start_up.h"
#include "form/transfer.h"
#include "platform/file_checks.h"

namespace polefit {

namespace {

/// Where the last-used name lies: a bare one in the current folder of the data.
std::string LastUsedPath(const Files& files) {
  const bool bare = files.lastUsedName.find(kSeparator) == std::string::npos;
  return bare ? JoinPath(files.currentFolder, files.lastUsedName) : files.lastUsedName;
}

/// Asks for a file for data that have none; false when there is to be none.
bool SaveBeforeRun(Program& program) {
  Files& files = program.files;
  const Reply reply =
      program.host.MessageBox("Okay to save '" + files.lastUsedName + "' now?",
                              message_style::kOkCancelQuestion, "Data -not- saved!");
  if (reply != Reply::ok) return false;
  const std::string former = files.currentFileName;
  if (former == kStartUpValues) files.currentFileName = "*.*";
  if (FileSaveAs(program)) return true;
  if (files.currentFileName == "*.*") files.currentFileName = former;
  return false;
}

/// True when the form's data are in a file, or were left unsaved on purpose.
bool SaveForRun(Program& program) {
  Files& files = program.files;
  PutAnswers(program);
  files.lastUsedName = files.CurrentPath();
  if (!FileExists(program.host, files.lastUsedName)) return SaveBeforeRun(program);
  return PromptSaveChanges(program, program.document.DataChanged) == kGoOn;
}

void AskForName(Program& program) {
  const Reply reply =
      program.host.MessageBox("Please save file with any valid name and re-run.",
                              message_style::kYesNoExclamation, "Filename is null or blank!");
  if (reply == Reply::yes) FileSaveAs(program);
}

void RunLastUsedFile(Program& program) {
  Files& files = program.files;
  // Kept: data that the user chose not to save are written all the same.
  if (program.document.RunMode != "Demo") WriteNamedForm(program);
  files.currentFileName = SplitPath(program.host, LastUsedPath(files), files.currentFolder);
  RunSolver(program);
}

void ReportNonExistent(Program& program) {
  // Kept: the digits "4" and "48" joined give one OK button, so Yes is never answered.
  constexpr int kJoinedStyle = 448;
  const Reply reply =
      program.host.MessageBox("'" + program.files.lastUsedName + "' is non-existent!", kJoinedStyle,
                              "Please save file and re-run.");
  if (reply == Reply::yes) FileSave(program);
}

}  // namespace

void SubmitRun(Program& program) {
  Files& files = program.files;
  if (program.document.RunMode == "Demo") {
    EnterUserFolder(program);
    files.currentFolder = UserFolder(program);
  } else {
    program.document.isSubmitted = true;
    if (!SaveForRun(program)) return;
  }
  if (files.lastUsedName.empty()) {
    AskForName(program);
  } else if (FileExists(program.host, LastUsedPath(files))) {
    RunLastUsedFile(program);
  } else {
    ReportNonExistent(program);
  }
}

}  // namespace polefit

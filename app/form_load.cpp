#include "app/form_load.h"

#include <optional>

#include "app/file_commands.h"
#include "app/start_up.h"
#include "form/field_rules.h"
#include "form/solver_settings.h"
#include "form/transfer.h"
#include "grids/cell_editor.h"
#include "grids/grid_routines.h"
#include "platform/file_checks.h"
#include "responsefile/reader.h"

namespace polefit {

namespace {

/// False when there is no such file; `failure` is why one that is there cannot be opened.
bool OpenLastRun(Program& program, std::optional<RunTimeError>& failure) {
  try {
    if (!FileExists(program.host, program.LastRunPath)) return false;
    program.files.lastUsedName = "last-run.ini";
    program.host.OpenForReading(program.LastRunPath);
    return true;
  } catch (const RunTimeError& error) {
    failure = error;
    return false;
  }
}

void ReadLastRun(Program& program) {
  FileState& files = program.files;
  FileReadMe(program.host, files, program.record, files.lastUsedName, program.ProgramFolder);
  program.host.CloseFile();
}

void ShowLastRun(Program& program) {
  std::optional<RunTimeError> failure;
  if (OpenLastRun(program, failure)) {
    ReadLastRun(program);
    GetAnswers(program);
  } else {
    PutAnswers(program);
  }
  ShowWeightColumn(Grids(program), program.frmMain.IsChecked("chkUseWeights"));
  ApplyFieldRules(program.frmMain);
  if (failure) throw *failure;
}

/// What cannot be read is told while the form still has its own values and its own file.
void RequireLastRun(Program& program) {
  try {
    program.host.OpenForReading(program.LastRunPath);
    program.host.CloseFile();
  } catch (RunTimeError& error) {
    error.description += ": " + program.LastRunPath;
    throw;
  }
}

void EndStartUp(Program& program) {
  const std::string name = program.files.currentFileName;
  program.frmMain.SetText("LastFileName", name);
  SetCurrentFile(program.host, program.files, name);
  program.DataChanged = 0;
}

}  // namespace

void LoadMainForm(Program& program) {
  program.frmMain.SelectTab(Tab::start);
  program.frmMain.PassData().SetRowCount(3);
  program.frmMain.DelayData().SetRowCount(3);
  SizeGridColumns(Grids(program));
  Start_Path(program);
  Start_INI(program);
  clearSolvdata(program.frmMain);
  RestoreLastRun(program);
}

void RestoreLastRun(Program& program) {
  FileState& files = program.files;
  files.currentFileName = "Start Up Values";
  files.currentFolder = program.ProgramFolder;
  files.lastUsedFolder = program.ProgramFolder;
  try {
    ShowLastRun(program);
  } catch (const RunTimeError&) {
    EndStartUp(program);
    throw;
  }
  EndStartUp(program);
}

void TakeImprovedValues(Program& program) {
  RequireLastRun(program);
  // The run's window leaves a cell being edited as it is; its text is a change like any other.
  HideCellEditor(Grids(program), false);
  if (PromptSaveChanges(program, program.DataChanged) == kGoOn) RestoreLastRun(program);
}

void OpenNamedFile(Program& program, const std::string& path) {
  Host& host = program.host;
  if (FileExists(host, path)) {
    // As an accepted dialog leaves it: Save looks for the bare name in the current folder.
    std::string folder;
    SplitPath(host, path, folder);
    host.ChangeFolder(host.ShortPath(folder));
    OpenResponseFile(program, path);
  } else {
    ReportMissingFile(host, path);
  }
}

}  // namespace polefit

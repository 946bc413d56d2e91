#include "app/form_load.h"

#include "app/start_up.h"
#include "form/field_rules.h"
#include "form/solver_settings.h"
#include "form/transfer.h"
#include "grids/grid_routines.h"
#include "platform/file_checks.h"
#include "responsefile/file_commands.h"
#include "responsefile/reader.h"

namespace polefit {

namespace {

void ReadLastRun(Program& program) {
  FileState& files = program.files;
  files.lastUsedName = "last-run.ini";
  program.host.OpenForReading(program.LastRunPath);
  FileReadMe(program.host, files, program.record, files.lastUsedName, program.ProgramFolder);
  program.host.CloseFile();
}

void ShowLastRun(Program& program) {
  if (FileExists(program.host, program.LastRunPath)) {
    ReadLastRun(program);
    GetAnswers(program);
  } else {
    PutAnswers(program);
  }
  ShowWeightColumn(Grids(program), program.frmMain.IsChecked("chkUseWeights"));
  ApplyFieldRules(program.frmMain);
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
  if (PromptSaveChanges(program, program.DataChanged) == kGoOn) RestoreLastRun(program);
}

void OpenNamedFile(Program& program, const std::string& path) {
  if (FileExists(program.host, path)) {
    OpenResponseFile(program, path);
  } else {
    ReportMissingFile(program.host, path);
  }
}

}  // namespace polefit

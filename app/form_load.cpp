#include "app/form_load.h"

#include <optional>

#include "app/file_commands.h"
#include "app/form_replacement.h"
#include "app/part_read.h"
#include "app/start_up.h"
#include "form/changes.h"
#include "form/field_rules.h"
#include "form/solver_settings.h"
#include "form/transfer.h"
#include "grids/grid_routines.h"
#include "platform/file_checks.h"
#include "responsefile/file_look.h"
#include "responsefile/reader.h"

namespace polefit {

namespace {

/// False when there is no such file; `failure` is why one that is there cannot be opened.
bool OpenLastRun(Program& program, std::optional<RunTimeError>& failure) {
  try {
    if (!FileExists(program.host, program.folders.LastRunPath)) return false;
    program.files.lastUsedName = Places::kLastRunName;
    program.host.OpenForReading(program.folders.LastRunPath);
    return true;
  } catch (const RunTimeError& error) {
    failure = error;
    return false;
  }
}

void ReadLastRun(Program& program) {
  Files& files = program.files;
  const auto stop = FileReadMe(program.host, files, program.document.record, files.lastUsedName,
                               program.folders.ProgramFolder);
  program.host.CloseFile();
  if (stop) TellLastRunPartRead(program, *stop);
}

void ShowLastRun(Program& program) {
  std::optional<RunTimeError> failure;
  if (OpenLastRun(program, failure)) {
    ReadLastRun(program);
    try {
      GetAnswers(program);
    } catch (const RunTimeError& error) {
      failure = error;  // what can be shown is shown, with its column and its boxes
    }
  } else {
    PutAnswers(program);
  }
  ShowWeightColumn(program.windows.grids,
                   program.windows.frmMain.IsChecked(BoxName(slot::kUseWeights)));
  ApplyFieldRules(program.windows.frmMain);
  if (!failure) return;
  failure->path = program.folders.LastRunPath;
  throw *failure;
}

/// What cannot be read, or not be shown, is told while the form still has its own values and its
/// own file.
void RequireLastRun(Program& program) {
  const std::string& path = program.folders.LastRunPath;
  program.host.OpenForReading(path);
  program.host.CloseFile();
  if (LookAt(program.host.ReadFile(path)).isResponseFile) return;
  RunTimeError error = MakeRunTimeError(error_number::kInputPastEndOfFile);
  error.path = path;
  throw error;
}

void EndStartUp(Program& program) {
  const std::string name = program.files.currentFileName;
  program.windows.frmMain.SetText(kLastFileNameBox, name);
  SetCurrentFile(program.host, program.files, name);
  program.document.DataChanged = 0;
  NoteShown(program);
}

/// Shows the values that the last run left, as those that the form starts with: they belong to no
/// file until they are saved. Without such a file the form's own contents become the record.
void RestoreLastRun(Program& program) {
  Files& files = program.files;
  files.currentFileName = kStartUpValues;
  files.currentFolder = program.folders.ProgramFolder;
  files.lastUsedFolder = program.folders.ProgramFolder;
  try {
    ShowLastRun(program);
  } catch (const RunTimeError&) {
    EndStartUp(program);
    throw;
  }
  EndStartUp(program);
}

}  // namespace

void LoadMainForm(Program& program) {
  program.windows.frmMain.SelectTab(Tab::start);
  program.windows.frmMain.PassData().SetRowCount(3);
  program.windows.frmMain.DelayData().SetRowCount(3);
  SizeGridColumns(program.windows.grids);
  Start_Path(program);
  Start_INI(program);
  clearSolvdata(program.windows.frmMain);
  LookForFormerContents(program, program.windows.CMDialog1.initialFolder);
  RestoreLastRun(program);
}

void TakeImprovedValues(Program& program) {
  RequireLastRun(program);
  if (AskBeforeReplacing(program) == kStop) return;
  const std::string name = program.files.currentFileName;
  RestoreLastRun(program);
  program.document.nameForSaveAs = name;
}

void OpenNamedFile(Program& program, const std::string& path, const PointsImport& import) {
  Host& host = program.host;
  if (!FileExists(host, path)) {
    ReportMissingFile(host, path);
    LookForFormerContent(program, path);
    return;
  }
  const std::optional<Choice> doubt = DoubtAbout(host, path, import);
  const std::size_t pressed = doubt ? host.Ask(*doubt) : 0;
  if (pressed == 0) {
    OpenFile(program, path);
  } else if (pressed + 1 < doubt->buttons.size()) {
    import(path);
  }
}

}  // namespace polefit

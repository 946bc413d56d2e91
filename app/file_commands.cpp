#include "app/file_commands.h"

#include "app/form_load.h"
#include "app/former_versions.h"
#include "app/part_read.h"
#include "base/pattern.h"
#include "base/text.h"
#include "form/changes.h"
#include "form/transfer.h"
#include "grids/grid_routines.h"
#include "platform/error_template.h"
#include "platform/file_checks.h"
#include "responsefile/reader.h"
#include "responsefile/writer.h"

namespace polefit {

namespace {

// Kept: the digits "48" and "0" joined, which gives an OK button and no known icon.
constexpr int kOpenUnavailableStyle = 480;

/// Messages about the file being opened name the current file.
ErrorTable OpenErrors(Program& program) {
  return {"FileOld", program.files.currentFileName, kOpenUnavailableStyle};
}

void EmptyRecord(ResponseRecord& record) {
  // Kept: Yout, the third passband column, keeps its old cells; no count reaches them.
  for (const int column : {1, 2, 4}) record.passband.ResizeColumn(column, 1);
  record.delay.Resize(1);
  record.slots.fill({});
  record.solver.fill({});
  record.nFreqPoints = 0;
  record.nDelayPoints = 0;
  record.solverCount = 0;
  record.Note1.clear();
  record.Note2.clear();
  record.LastFileName = kNewData;
}

/// The current name with its extension as "*". Kept: with no dot, or a leading one, it is cut to
/// as many characters as the scratch text happens to hold. A name that points got is free and
/// whole.
std::string SuggestedName(const Program& program) {
  const Files& files = program.files;
  const std::string path = JoinPath(files.currentFolder, files.currentFileName);
  if (path == program.document.nameForSaveAs) return files.currentFileName;
  const bool isOfRun =
      program.files.currentFileName == kStartUpValues && !program.document.nameForSaveAs.empty();
  const std::string& name =
      isOfRun ? program.document.nameForSaveAs : program.files.currentFileName;
  const std::size_t dot = name.find('.');
  const std::size_t scratch = CharacterCount(program.Scratch);
  const bool hasStem = dot != std::string::npos && dot > 0;
  return std::string(hasStem ? name.substr(0, dot) : FirstCharacters(name, scratch)) + ".*";
}

/// The names of data that are in no file: a file of such a name would be saved over unasked.
std::optional<Choice> RefuseOwnName(const std::string& path) {
  const std::string name = CutPath(path).name;
  if (name != kStartUpValues && name != kNewData) return std::nullopt;
  return Choice{
      "\"" + name + "\" stands for data that are in no file yet. Please choose another name.",
      {"OK"}};
}

void TellLostCharacters(Program& program, int count) {
  if (count == 0) return;
  const std::string text = "'" + program.files.currentFileName + "' cannot hold " +
                           std::to_string(count) +
                           " of the characters typed; each stands as \"?\" in the file.";
  if (text == program.document.lastToldLoss) return;
  program.document.lastToldLoss = text;
  program.host.MessageBox(text, message_style::kExclamation, "Characters replaced");
}

/// Names the file that a save could not write, and says what it has left.
void SayWhatIsLeft(Program& program, RunTimeError& error) {
  error.path = program.files.CurrentPath();
  try {
    const auto former = FormerContentOfTorn(program.host, error.path);
    if (!former) return;
    error.reason = "'" + program.files.currentFileName +
                   "' is incomplete; its former content stands in '" + CutPath(*former).name + "'";
  } catch (const RunTimeError&) {
    return;  // what has failed is told all the same
  }
}

bool IsFileError(int number) {
  return number > error_number::kBadFileNumber && number <= error_number::kPathNotFound;
}

/// A line break in it would tear the file's first line in two.
void RequireNameForLine(const std::string& name) {
  if (!HasControlCharacters(name)) return;
  throw RunTimeError{error_number::kBadFileNumber,
                     "The name '" + name +
                         "' stands in the file's first line, which can hold no control "
                         "character.  Rename the file, or save it under another name."};
}

void DeleteAfterQuestion(Program& program, const std::string& path) {
  if (HasWildcards(path) || !FileExists(program.host, path)) return;
  const Reply reply = program.host.MessageBox("Delete '" + path + "' File.",
                                              message_style::kYesNoQuestion, "Confirm Delete?");
  if (reply == Reply::yes) program.host.DeleteFile(path);
}

}  // namespace

int PromptSaveChanges(Program& program, std::int16_t DataChanged) {
  PutAnswers(program);
  if (DataChanged == 0) return kGoOn;
  switch (program.host.MessageBox("Save current data?", message_style::kYesNoCancelQuestion,
                                  "Data in form has changed!")) {
    case Reply::yes:  // Kept: it asks for a name even when the data have one
      return FileSaveAs(program) ? kGoOn : kStop;
    case Reply::no:
      return kGoOn;
    default:
      return kStop;
  }
}

void FileNew(Program& program) {
  if (PromptSaveChanges(program, program.document.DataChanged) == kStop) return;
  const Reply reply = program.host.MessageBox(
      "Okay to Clear responses?", message_style::kOkCancelQuestion, "Confirm 'New' Response.");
  if (reply != Reply::ok) return;
  // Asked first of all: where it fails, nothing has been emptied yet.
  const std::string folder = program.host.CurrentFolder();
  EmptyRecord(program.document.record);
  ClearBoth(program.windows.grids);
  program.files.currentFileName = program.document.record.LastFileName;
  program.files.currentFolder = folder;
  GetAnswers(program);
  NoteShown(program);
}

void FileOld(Program& program) {
  OpenChosenFile(program, {});
}

void OpenChosenFile(Program& program, const PointsImport& import) {
  const ErrorTable errors = OpenErrors(program);
  int choice = kStop;
  RunStep(program.host, errors,
          [&] { choice = PromptSaveChanges(program, program.document.DataChanged); });
  if (choice == kStop) return;
  CommonDialog& dialog = program.windows.CMDialog1;
  dialog.title = "Open Response Input File";
  dialog.filter =
      "All Files (*.*)|*.*|"
      "Response Files (*.?\?)|*.?;*.??|Example Response Files (Ex-*.?\?)|Ex-*.?;Ex-*.??";
  dialog.filterIndex = 2;  // Kept: it hides files with three characters behind the dot
  dialog.fileName = "*.*";
  dialog.cancelIsError = true;
  dialog.judge = [&program, import](const std::string& path) {
    return DoubtAbout(program.host, path, import);
  };
  const StepResult shown = RunStep(program.host, errors, [&] { program.host.ShowOpen(dialog); });
  // A dialog that was skipped has chosen nothing that the next steps could work on.
  if (shown != StepResult::done) return;
  if (dialog.pressed == kImportItsPoints) return import(dialog.fileName);
  OpenResponseFile(program, dialog.fileName);
}

void OpenResponseFile(Program& program, const std::string& path) {
  Host& host = program.host;
  FormCells before = CellsOf(program);
  std::optional<ReadStop> stop;
  Files& files = program.files;
  const ErrorTable errors = OpenErrors(program);
  RunStep(host, errors, [&] { SetCurrentFile(host, files, path); });
  program.windows.CMDialog1.initialFolder = files.currentFolder;
  const StepResult opened =
      RunStep(host, errors, [&] { host.OpenForReading(files.CurrentPath()); });
  if (opened == StepResult::done) {
    // The last-used name takes what line 1 says; the current name stays the chosen file.
    stop =
        FileReadMe(host, files, program.document.record, files.lastUsedName, files.currentFolder);
    RunStep(host, errors, [&] { host.CloseFile(); });
  }
  // Kept: a file with fewer than three zero counts ends the program here.
  RunStep(host, errors, [&] { GetAnswers(program); });
  NoteShown(program);
  RememberFile(program);
  if (stop) TellPartRead(program, *stop, std::move(before));
  LookForFormerContent(program, path);
}

void OpenInsteadOfForm(Program& program, const std::string& path, const PointsImport& import) {
  if (PromptSaveChanges(program, program.document.DataChanged) == kStop) return;
  OpenNamedFile(program, path, import);
}

void FileSave(Program& program) {
  // Kept: the data stay marked as changed, and the bare name is looked for in the folder that the
  // last dialog left current.
  if (!FileExists(program.host, program.files.currentFileName)) {
    FileSaveAs(program);
    return;
  }
  program.files.lastUsedName = program.files.currentFileName;
  WriteNamedForm(program);
  // The name alone is no change of the data.
  const std::int16_t changed = program.document.DataChanged;
  program.windows.frmMain.SetText(kLastFileNameBox, program.files.currentFileName);
  program.document.DataChanged = changed;
}

bool FileSaveAs(Program& program) {
  Host& host = program.host;
  Files& files = program.files;
  const ErrorTable errors{"FileSaveAs", files.lastUsedName};
  CommonDialog& dialog = program.windows.CMDialog1;
  dialog.title = "Save Response Input File As ...";
  dialog.filter = "All Files (*.*)|*.*|Text Files (*.txt)|*.txt";
  dialog.filterIndex = 1;
  dialog.fileName = SuggestedName(program);
  dialog.cancelIsError = true;
  dialog.judge = RefuseOwnName;
  if (RunStep(host, errors, [&] { host.ShowSave(dialog); }) != StepResult::done) return false;
  RunStep(host, errors, [&] { SetCurrentFile(host, files, dialog.fileName); });
  dialog.initialFolder = files.currentFolder;
  const StepResult written = RunStep(host, errors, [&] { WriteForm(program); });
  program.windows.frmMain.SetText(kLastFileNameBox, files.currentFileName);
  return written == StepResult::done;
}

void FileDelete(Program& program) {
  CommonDialog& dialog = program.windows.CMDialog1;
  dialog.title = "Select File to be Deleted";
  dialog.filter = "All Files (*.*)|*.*|";
  dialog.filterIndex = 1;
  dialog.fileName = "*.*";
  dialog.cancelIsError = false;
  dialog.judge = nullptr;
  program.host.ShowOpen(dialog);
  if (dialog.fileName.empty()) return;
  Files& files = program.files;
  files.lastUsedName = dialog.fileName;
  DeleteAfterQuestion(program, files.lastUsedName);
  SplitPath(program.host, files.lastUsedName, files.lastUsedFolder);
  dialog.initialFolder = files.lastUsedFolder;
}

void WriteNamedForm(Program& program) {
  try {
    WriteForm(program);
  } catch (RunTimeError& error) {
    if (IsFileError(error.number)) SayWhatIsLeft(program, error);
    throw;
  }
}

void WriteForm(Program& program) {
  RequireNameForLine(program.files.currentFileName);
  PutAnswers(program);
  const std::optional<FormerFile> former = KeepFormerFile(program);
  program.document.tornPath = program.host.ResolvedPath(program.files.CurrentPath());
  const Files& files = program.files;
  const int lost =
      WriteResponseFile(program.host, program.document.record,
                        {files.currentFolder, files.currentFileName, program.folders.LastRunPath});
  program.document.tornPath.clear();
  NoteSaved(program);
  RememberFile(program);
  TellLostCharacters(program, lost);
  if (former) TellOfFormerFile(program, *former);
}

}  // namespace polefit

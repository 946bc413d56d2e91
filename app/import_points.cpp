#include "app/import_points.h"

#include <utility>

#include "app/file_commands.h"
#include "app/form_replacement.h"
#include "exchange/read/response_table.h"
#include "platform/file_checks.h"

namespace polefit {

namespace {

void Tell(Program& program, const std::string& path, const std::string& why) {
  program.host.MessageBox("No points of '" + path + "' can be taken: " + why + ".",
                          message_style::kExclamation, "Import Points");
}

/// The file as a source; nothing, and a message, when there are no points in it.
bool Read(Program& program, const std::string& path, SourceFile& source) {
  try {
    source = ReadSourceFile(program.host, path);
  } catch (const RunTimeError& error) {
    const bool isLarge = error.number == error_number::kOutOfMemory;
    Tell(program, path, isLarge ? "it is larger than 64 MB" : error.description);
    return false;
  }
  if (source.table.fault.empty()) return true;
  Tell(program, path, source.table.fault);
  return false;
}

/// The first name that no file in the folder has: "dut.1", "dut.2" ...
std::string FreeName(Program& program, const std::string& folder, const std::string& source) {
  constexpr int kLast = 999;
  const std::string stem = source.substr(0, source.rfind('.'));
  for (int number = 1; number <= kLast; ++number) {
    std::string name = stem + "." + std::to_string(number);
    if (!FileExists(program.host, JoinPath(folder, name))) return name;
  }
  return {};
}

/// A new problem belongs beside its points, under a name of its own, so that no save writes over
/// the problem that was there before.
void NameProblem(Program& program, const std::string& path, const std::string& source,
                 FormCells& cells) {
  std::string folder;
  SplitPath(program.host, path, folder);
  program.host.ChangeFolder(folder);
  cells.files.currentFolder = folder;
  cells.files.currentFileName = FreeName(program, folder, source);
  cells.shownFileName = cells.files.currentFileName;
  cells.typed.LastFileName = cells.files.currentFileName;
  program.windows.CMDialog1.initialFolder = folder;
}

void TakePlan(Program& program, const std::string& path, const ImportPlan& plan) {
  FormCells cells = CellsOf(program);
  const ImportPreview preview = PreviewOf(plan, cells);
  if (!preview.reason.empty()) return;
  cells = Imported(plan, preview, std::move(cells), program.host.FormatNow("%Y-%m-%d"));
  if (plan.startsProblem) NameProblem(program, path, plan.source.name, cells);
  ShowCells(program, cells);
  if (plan.startsProblem) {
    program.windows.frmMain.SetFocus("nPoles");
  } else {
    program.windows.frmMain.SelectTab(Tab::passbandData);
  }
}

}  // namespace

void ImportPoints(Program& program, const std::vector<std::string>& paths, const AskForPlan& ask) {
  SourceFile source;
  if (paths.empty() || !Read(program, paths.front(), source)) return;
  const FormCells form = CellsOf(program);
  ImportPlan plan = PlanFor(std::move(source), form);
  if (paths.size() > 1) {
    SourceFile delays;
    if (!Read(program, paths[1], delays)) return;
    TakeDelayFrom(plan, std::move(delays));
  }
  const auto readAgain = [&](const TextChoices& choices) {
    return ReadSourceFile(program.host, paths.front(), choices);
  };
  if (!ask(plan, form, readAgain)) return;
  const bool mayReplace = !plan.startsProblem || AskBeforeReplacing(program) == kGoOn;
  if (mayReplace) TakePlan(program, paths.front(), plan);
}

void ImportChosenFile(Program& program, const AskForPlan& ask) {
  const std::string folder = program.host.CurrentFolder();
  CommonDialog dialog = program.windows.CMDialog1;
  dialog.title = "Import Points";
  dialog.filter =
      "All Files (*.*)|*.*|Touchstone (*.s?p)|*.s?p;*.S?P;*.ts|Text (*.csv)|*.csv;*.txt;*.tsv";
  dialog.filterIndex = 1;
  dialog.fileName = "*.*";
  dialog.cancelIsError = false;
  program.host.ShowOpen(dialog);
  if (dialog.fileName.empty()) return;
  // Save looks for the current file in the current folder, which a chosen file must not move.
  program.host.ChangeFolder(folder);
  ImportPoints(program, {dialog.fileName}, ask);
}

bool HoldsOnlyPoints(Program& program, const std::string& path) {
  try {
    const std::string bytes = program.host.ReadFile(path);
    if (IsResponseFile(bytes)) return false;
    const SourceFile source = ReadSourceBytes(path, bytes);
    return source.table.fault.empty() && source.table.Rows() >= 2;
  } catch (const RunTimeError&) {
    return false;  // opening it will tell
  }
}

}  // namespace polefit

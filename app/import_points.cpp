#include "app/import_points.h"

#include <utility>

#include "app/file_commands.h"
#include "app/form_replacement.h"
#include "exchange/import/remembered.h"
#include "platform/file_checks.h"
#include "platform/file_choice.h"

namespace polefit {

namespace {

/// Under this name the choices for each kind of file are kept for the user.
const std::string kChoices = "importChoices";

void Tell(Program& program, const std::string& path, const std::string& why) {
  program.host.MessageBox("No points of '" + path + "' can be taken: " + why + ".",
                          message_style::kExclamation, "Import Points");
}

/// The file as a source; nothing, and a message, when there are no points in it.
bool Read(Program& program, const std::string& path, SourceFile& source) {
  try {
    source = ReadSourceFile(program.host, path);
  } catch (const RunTimeError& error) {
    Tell(program, path, InWords(error));
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
void NameProblem(Program& program, const std::string& folder, const std::string& source,
                 FormCells& cells) {
  program.host.ChangeFolder(folder);
  cells.files.currentFolder = folder;
  cells.files.currentFileName = FreeName(program, folder, source);
  cells.shownFileName = cells.files.currentFileName;
  cells.typed.LastFileName = cells.files.currentFileName;
  program.windows.CMDialog1.initialFolder = folder;
  program.document.nameForSaveAs = JoinPath(folder, cells.files.currentFileName);
}

void TakePlan(Program& program, const std::string& folder, const ImportPlan& plan) {
  FormCells cells = CellsOf(program);
  const ImportPreview preview = PreviewOf(plan, cells);
  if (!preview.reason.empty()) return;
  cells = Imported(plan, preview, std::move(cells));
  if (plan.startsProblem) NameProblem(program, folder, plan.source.name, cells);
  ShowCells(program, cells);
  if (plan.startsProblem) {
    program.windows.frmMain.SetFocus("nPoles");
  } else {
    program.windows.frmMain.SelectTab(plan.isOnlyDelay ? Tab::delayData : Tab::passbandData);
  }
  Host& host = program.host;
  host.KeepUserSetting(kChoices, Remember(host.UserSetting(kChoices), plan));
}

/// Asks for a file with points; "" when none is chosen.
std::string ChooseFile(Program& program) {
  CommonDialog dialog;
  dialog.initialFolder = program.windows.CMDialog1.initialFolder;
  dialog.title = "Import Points";
  dialog.filter =
      "All Files (*.*)|*.*|Touchstone (*.s?p)|*.s?p;*.S?P;*.ts|Text (*.csv)|*.csv;*.txt;*.tsv";
  dialog.filterIndex = 1;
  dialog.fileName = "*.*";
  dialog.cancelIsError = false;
  return ChooseOtherFile(program.host, std::move(dialog), &Host::ShowOpen);
}

std::optional<SourceFile> ChooseOther(Program& program) {
  SourceFile source;
  const std::string path = ChooseFile(program);
  if (path.empty() || !Read(program, path, source)) return std::nullopt;
  return source;
}

/// Lets the user change the plan and carries it out. `folder` is that of the points.
void OfferPlan(Program& program, ImportPlan plan, const FormCells& form, const std::string& folder,
               const std::function<SourceFile(const TextChoices&)>& readAgain,
               const AskForPlan& ask) {
  plan.date = program.host.FormatNow("%Y-%m-%d");
  if (!plan.isOnlyDelay && !plan.isDelayFromFile) {
    Recall(program.host.UserSetting(kChoices), plan);
  }
  if (!ask(plan, form, {readAgain, [&] { return ChooseOther(program); }})) return;
  const bool mayReplace = !plan.startsProblem || AskBeforeReplacing(program) == kGoOn;
  if (mayReplace) TakePlan(program, folder, plan);
}

std::string FolderOfPoints(Program& program, const std::string& path) {
  std::string folder;
  SplitPath(program.host, path, folder);
  return folder;
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
  OfferPlan(program, std::move(plan), form, FolderOfPoints(program, paths.front()), readAgain, ask);
}

bool ImportDelay(Program& program, const std::string& path, const AskForPlan& ask) {
  SourceFile source;
  if (!Read(program, path, source)) return true;
  if (!HasDelays(source)) return false;
  const FormCells form = CellsOf(program);
  const auto readAgain = [&](const TextChoices& choices) {
    return ReadSourceFile(program.host, path, choices);
  };
  OfferPlan(program, DelayPlanFor(std::move(source), form), form, {}, readAgain, ask);
  return true;
}

bool ImportText(Program& program, const std::string& text, bool isForDelays,
                const AskForPlan& ask) {
  const auto read = [&](const TextChoices& choices) {
    return ReadSourceBytes("clipboard", text, choices);
  };
  SourceFile source = read({});
  if (!source.table.fault.empty()) return false;
  const FormCells form = CellsOf(program);
  const bool isOnlyDelay = isForDelays && HasDelays(source);
  ImportPlan plan =
      isOnlyDelay ? DelayPlanFor(std::move(source), form) : PlanFor(std::move(source), form);
  OfferPlan(program, std::move(plan), form, program.host.CurrentFolder(), read, ask);
  return true;
}

void ImportChosenFile(Program& program, const AskForPlan& ask) {
  const std::string path = ChooseFile(program);
  if (!path.empty()) ImportPoints(program, {path}, ask);
}

}  // namespace polefit

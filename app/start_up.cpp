#include "app/start_up.h"

#include <variant>

#include "app/own_folders.h"
#include "app/settings_file.h"
#include "base/number.h"
#include "base/text.h"
#include "platform/error_template.h"
#include "platform/file_checks.h"
#include "platform/registry.h"

namespace polefit {

namespace {

bool IsWholePath(const std::string& path) {
  return path.starts_with(kSeparator) || (path.size() >= 3 && path.compare(1, 2, ":\\") == 0);
}

/// Kept: the name of the folder that the program runs from is not looked at; it is taken to be
/// this one.
std::string ProgramFolderIn(const std::string& baseFolder) {
  const std::string base = IsReleaseBuild() ? baseFolder : "e:\\Tools.vb";
  return Places::Below(base).program;
}

void ReadOrMakeSettings(Program& program) {
  if (FileExists(program.host, SettingsPath(program))) {
    ReadSettingsFile(program);
  } else {
    WriteSettingsFile(program);
  }
}

void PrepareDataFolder(Program& program) {
  const std::string user = UserFolder(program);
  if (!dirExists(program.host, user)) program.host.MakeFolder(user);
  EnterUserFolder(program);
  program.Scratch = LastFilePath(program);
  if (program.Scratch.empty()) program.Scratch = user;
  program.windows.CMDialog1.initialFolder = program.Scratch;
}

/// Kept: the description runs straight into the advice, and "occured" is spelled so.
void ReportStartFailure(Program& program, const RunTimeError& error) {
  program.host.MessageBox("Unexpected error #" + SignedText(error.number) +
                              " occured: \r\nPath =" + program.folders.ProgramFolder + "\r\n" +
                              error.description + "Suggest re-installing Polefit.",
                          message_style::kCritical, RoutineTitle("Start_INI"));
}

}  // namespace

void Start_Path(Program& program) {
  constexpr std::size_t kShortestBase = 4;
  program.document.RunMode = " ";
  program.CommandDelay = 1.0F;
  program.document.record.solverCount = 0;
  program.folders.BaseFolder = CutPath(program.host.OwnFolder()).folder.value_or("");
  if (CharacterCount(program.folders.BaseFolder) < kShortestBase) {
    program.host.MessageBox(
        "Missing Polefit's base directory, \\CV-Tools; Can't proceed without it.  Please "
        "re-install Polefit.",
        message_style::kCritical, "In 'Start_Path' routine ... Exiting!");
    program.host.EndProgram();
  }
  program.folders.ProgramFolder = ProgramFolderIn(program.folders.BaseFolder);
  PrepareOwnFolders(program);
}

void Start_INI(Program& program) {
  program.folders.RegistryKeyPath = "Software\\Corvane Systems\\Polefit";
  program.folders.LastRunPath = PlacesOf(program).LastRun();
  try {
    ReadOrMakeSettings(program);
    PrepareDataFolder(program);
  } catch (const RunTimeError& error) {
    program.host.AbandonFile();
    ReportStartFailure(program, error);
    // Kept: a broken start was meant to delete `LastRunPath` too, but the program ends before.
    EndProgram(program);
  }
}

std::string LastFilePath(Program& program) {
  Host& host = program.host;
  const std::string& key = program.folders.RegistryKeyPath;
  if (!RegKeyExists(host, kCurrentUser, key)) return {};
  const RegistryData stored =
      QueryRegValue(host, kCurrentUser, key, "LastFilePath", registry_type::kString, std::string());
  const std::string& path = std::get<std::string>(stored);
  return IsWholePath(path) ? path : std::string();
}

std::string UserFolder(const Program& program) {
  return PlacesOf(program).User();
}

void EnterUserFolder(Program& program) {
  program.host.ChangeDrive(program.folders.ProgramFolder);
  program.host.ChangeFolder(UserFolder(program));
}

void EndProgram(Program& program) {
  // Kept: whichever way out led here, nothing is asked and nothing is saved.
  program.files.lastUsedName = program.folders.LastRunPath;
  program.host.EndProgram();
}

}  // namespace polefit

#include "app/solver_start.h"

#include <array>
#include <cstdio>

#include "app/former_versions.h"
#include "app/start_up.h"
#include "base/number.h"
#include "base/text.h"
#include "platform/file_checks.h"

namespace polefit {

namespace {

/// The four words that the solver takes: data file, data folder, base folder, drive. Kept: the
/// drive is the first two characters of the base folder, also where there are no drives.
std::vector<std::string> SolverArguments(const Program& program) {
  const Files& files = program.files;
  const std::string drive(FirstCharacters(program.folders.BaseFolder, 2));
  return {CommandLinePath(files.lastUsedName), CommandLinePath(files.lastUsedFolder),
          CommandLinePath(program.folders.BaseFolder), CommandLinePath(drive)};
}

void TakeRunFile(Program& program) {
  Files& files = program.files;
  files.lastUsedFolder = program.host.ShortPath(files.currentFolder);
  std::string folder;
  const std::string path = files.CurrentPath();
  files.lastUsedName = SplitPath(program.host, path, folder);
}

/// The authors' own way in, with fixed folders and a question.
bool AskDevelopmentRun(Program& program) {
  program.folders.BaseFolder = "c:\\program files\\cv-Tools";
  program.folders.ProgramFolder = JoinPath(program.folders.BaseFolder, "cvx");
  const Command command{JoinPath(program.folders.ProgramFolder, "run-pft.pif"),
                        SolverArguments(program)};
  const Reply reply = program.host.MessageBox(
      "Test AOK! ... whereAmI= " + CommandLine(command) + "\r\nWant to make a run?",
      message_style::kYesNoQuestion, "");
  return reply == Reply::yes;
}

void WriteRestartScript(Host& host, const std::string& path, const std::string& executable) {
  host.OpenForWriting(path, Saving::whole);
  host.WriteLine("REGEDIT4");
  host.WriteLine("");
  host.WriteLine("[HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce]");
  // Kept: the path is fixed and does not follow the installation.
  host.WriteLine(R"("Polefit startup"="c:\\program files\\cv-Tools\\Tessel.hz\\)" + executable +
                 R"(.exe")");
  host.CloseFile();
}

void ReportMissingStartScript(Host& host) {
  host.MessageBox(
      "Re-Install Polefit Program; if this continues please contact us.  Try running a Demo and "
      "see if this error occurs.",
      message_style::kExclamation, "A Polefit File is missing!");
}

/// "OK" when the platform can run the solver, else "nogo" after a message.
std::string CheckDosSupport(Host& host) {
  constexpr double kFirstWithout = 4.11;
  const std::string version = GetWindowsVer(host);
  if (ReadNumber(version) < kFirstWithout) return "OK";
  host.MessageBox("Sorry, requires Windows 95/98 to run DOS portion of program!",
                  message_style::kExclamation, "GetWindowsVer = " + version);
  return "nogo";
}

}  // namespace

void RunSolver(Program& program) {
  TakeRunFile(program);
  if (!IsReleaseBuild() && !AskDevelopmentRun(program)) return;
  program.folders.BaseFolder = program.host.ShortPath(program.folders.BaseFolder);
  program.folders.ProgramFolder = Places::Below(program.folders.BaseFolder).program;
  if (CheckDosSupport(program.host) == "nogo") return;
  if (!FileExists(program.host, PlacesOf(program).StartFile())) {
    ReportMissingStartScript(program.host);
    return;
  }
  // A run that fails must not cost the last one's result.
  KeepFile(program, PlacesOf(program).Report(), VersionKind::foreign);
  KeepFile(program, PlacesOf(program).LastRun(), VersionKind::saved);
  WriteRestartEntry(program, Places::kSolverName);
  program.host.StartProgram({PlacesOf(program).SolverStart(), SolverArguments(program),
                             WindowStyle::normal, CommandKind::runSolver,
                             program.folders.ProgramFolder});
}

std::string GetWindowsVer(Host& host) {
  const std::uint32_t version = host.GetVersion() & 0xFFFFU;
  const std::uint32_t hundredths = version % 256 * 100 + version / 256;
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "%u.%02u", hundredths / 100, hundredths % 100);
  return text.data();
}

bool WriteRestartEntry(Program& program, const std::string& executable) {
  Host& host = program.host;
  const std::string script = PlacesOf(program).RestartScript();
  try {
    WriteRestartScript(host, script, executable);
    host.StartProgram({"regedit",
                       {"/s", script},
                       WindowStyle::hidden,
                       CommandKind::importRegistryScript,
                       script});
    CopyWithCommand(host, PlacesOf(program).StartFile(), PlacesOf(program).StartFileCopy());
  } catch (const RunTimeError&) {
    host.AbandonFile();
    return false;
  }
  return true;
}

void CopyWithCommand(Host& host, const std::string& source, const std::string& target) {
  if (host.LookUpFile(source).empty()) {
    host.MessageBox("\"" + source + "\" is not a valid file name.", message_style::kOk, "Polefit");
    return;
  }
  host.StartProgram({"COMMAND.COM",
                     {"/C", "COPY", source, target},
                     WindowStyle::minimised,
                     CommandKind::copyFile,
                     source,
                     target});
}

}  // namespace polefit

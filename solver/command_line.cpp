#include "solver/command_line.h"

#include "platform/places.h"

namespace polefit {

namespace {

constexpr const char* kUsage =
    "usage: pfit DATA_FILE DATA_FOLDER BASE_FOLDER DRIVE | pfit FILE [--out FOLDER]";

/// The front end's call: the outputs go into the program folder.
RunFiles FrontEndFiles(const std::string& dataFile, const std::string& dataFolder,
                       const std::string& baseFolder) {
  const Places places = Places::Below(baseFolder);
  return {dataFile,        dataFolder,       places.program,
          places.Report(), places.LastRun(), places.RunLock()};
}

/// A call by hand or script: the outputs bear the data file's name, so that many runs can share a
/// folder.
RunFiles OwnFiles(const std::string& path, const std::string& outputFolder) {
  const std::string name = CutPath(path).name;
  const std::string folder = FolderOf(path);
  const std::string output = outputFolder.empty() ? folder : outputFolder;
  return {name,
          folder,
          output,
          JoinPath(output, name + ".out.txt"),
          JoinPath(output, name + ".last-run.ini"),
          JoinPath(output, name + ".lock")};
}

bool IsOption(const std::string& word) {
  return word.starts_with("--");
}

}  // namespace

std::string RunFiles::InputPath() const {
  return JoinPath(dataFolder, dataFile);
}

Request ParseCommandLine(const std::vector<std::string>& words) {
  using Action = Request::Action;
  if (words.size() == 1 && words[0] == "--help") return {Action::help, {}};
  if (words.size() == 1 && words[0] == "--version") return {Action::version, {}};
  const bool namesFile = !words.empty() && !words[0].ends_with('/') && !words[0].empty();
  // The front end's four words are names, whatever they begin with.
  if (namesFile && words.size() == 4) {
    return {Action::run, FrontEndFiles(words[0], words[1], words[2])};
  }
  if (!namesFile || IsOption(words[0])) return {};
  if (words.size() == 1) return {Action::run, OwnFiles(words[0], "")};
  if (words.size() == 3 && words[1] == "--out" && !words[2].empty()) {
    return {Action::run, OwnFiles(words[0], words[2])};
  }
  return {};
}

std::string HelpText() {
  return std::string(kUsage) +
         "\n\n"
         "Fits the poles and zeros of H(s) to the problem in a Response Input File.\n\n"
         "  DATA_FILE DATA_FOLDER BASE_FOLDER DRIVE\n"
         "                 as the front end calls it: writes ~pft-out.txt and last-run.ini\n"
         "                 into BASE_FOLDER/Tessel.hz; DRIVE is not used\n"
         "  FILE           writes FILE.out.txt (the report) and FILE.last-run.ini (the problem\n"
         "                 with the answers found) beside it\n"
         "  --out FOLDER   writes them into FOLDER\n"
         "  --help, --version\n\n"
         "Exit: 0 converged, 1 stopped early with the best point found, 2 faulty answers,\n"
         "3 data file unreadable, 4 output not writable, 5 no finite error, 6 wrong usage,\n"
         "7 another run is using the output folder.\n";
}

}  // namespace polefit

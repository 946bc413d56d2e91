#include "solver/command_line.h"

#include <algorithm>
#include <charconv>
#include <set>

#include "base/text.h"
#include "platform/paths.h"
#include "platform/places.h"
#include "solver/orders.h"

namespace polefit {

namespace {

using Action = Request::Action;

constexpr const char* kUsage =
    "usage: pfit [OPTIONS] FILE | pfit --summary [OPTIONS] FILE... | pfit --orders A-B FILE";

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

bool IsFrontEndCall(const std::vector<std::string>& words, Host& host) {
  if (words.size() != 4 || words[1].empty() || words[2].empty()) return false;
  if (words[3] != FirstCharacters(words[2], 2)) return false;
  const bool mayBeDataFolder = host.LookUpFolder(words[1]) || host.LookUpFile(words[1]).empty();
  return mayBeDataFolder && host.LookUpFolder(words[2]);
}

/// A whole number from `least` to `most`, or nothing.
std::optional<int> Whole(std::string_view text, int least, int most) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isWhole = error == std::errc() && end == text.data() + text.size();
  return isWhole && number >= least && number <= most ? std::optional(number) : std::nullopt;
}

/// Reads options and files one after the other.
class WordReader {
 public:
  explicit WordReader(const std::vector<std::string>& words) : words_(words) {}

  /// The request; its action is usage when a word makes no sense.
  Request Read() {
    for (at_ = 0; at_ < words_.size(); ++at_) {
      const std::string& word = words_[at_];
      const bool isOption = !onlyFiles_ && word.size() > 1 && word.starts_with('-');
      if (isOption ? !TakeOption(word) : !TakeFile(word)) return {};
    }
    for (const std::string& name : request_.names) {
      request_.files.push_back(OwnFiles(name, outputFolder_));
    }
    if (!IsSensible()) return {};
    return request_;
  }

 private:
  bool TakeFile(const std::string& word) {
    request_.names.push_back(word);
    return !word.empty() && !word.ends_with(kSeparator);
  }

  bool TakeOption(const std::string& word) {
    given_.insert(word);
    if (word == "--") return onlyFiles_ = true;
    if (word == "--help") return Become(Action::help);
    if (word == "--version") return Become(Action::version);
    if (word == "--summary") return Become(Action::summary);
    if (word == "--json") return request_.json = true;
    if (word == "--csv") return request_.csv = true;
    if (word == "--all-rows") return request_.allRows = true;
    if (word == "--out") return TakeValue(outputFolder_);
    if (word == "--jobs") return TakeJobs();
    return word == "--orders" && TakeOrders();
  }

  bool Become(Action action) {
    const bool isFirst = request_.action == Action::usage || request_.action == action;
    request_.action = action;
    return isFirst;
  }

  bool TakeValue(std::string& value) {
    if (++at_ >= words_.size()) return false;
    value = words_[at_];
    return !value.empty();
  }

  bool TakeJobs() {
    constexpr int kMost = 1024;
    std::string value;
    const std::optional<int> jobs = TakeValue(value) ? Whole(value, 1, kMost) : std::nullopt;
    request_.jobs = jobs.value_or(0);
    return jobs.has_value();
  }

  /// "3-8".
  bool TakeOrders() {
    std::string value;
    if (!TakeValue(value) || !Become(Action::orders)) return false;
    const std::size_t dash = std::min(value.find('-'), value.size());
    const auto from = Whole(value.substr(0, dash), 1, kMostPolesTried);
    const auto to = dash < value.size() ? Whole(value.substr(dash + 1), 1, kMostPolesTried) : from;
    if (!from || !to || *from > *to) return false;
    request_.fewestPoles = *from;
    request_.mostPoles = *to;
    return true;
  }

  /// Whether the options belong together and with the files.
  bool IsSensible() {
    const auto onlyWith = [this](std::initializer_list<const char*> options) {
      return std::all_of(given_.begin(), given_.end(), [&](const std::string& option) {
        return std::find(options.begin(), options.end(), option) != options.end();
      });
    };
    switch (request_.action) {
      case Action::help:
      case Action::version:
        return words_.size() == 1;
      case Action::summary:
        return !request_.files.empty() &&
               onlyWith({"--", "--summary", "--jobs", "--csv", "--out", "--all-rows"});
      case Action::orders:
        return request_.files.size() == 1 && onlyWith({"--", "--orders", "--json"});
      default:
        request_.action = Action::run;
        return request_.files.size() == 1 && onlyWith({"--", "--json", "--out", "--all-rows"});
    }
  }

  const std::vector<std::string>& words_;
  std::size_t at_ = 0;
  bool onlyFiles_ = false;
  std::string outputFolder_;
  std::set<std::string> given_;
  Request request_;
};

}  // namespace

std::string RunFiles::InputPath() const {
  return JoinPath(dataFolder, dataFile);
}

Request ParseCommandLine(const std::vector<std::string>& words, Host& host) {
  if (!IsFrontEndCall(words, host)) return WordReader(words).Read();
  Request request;
  request.action = Action::run;
  request.files = {FrontEndFiles(words[0], words[1], words[2])};
  request.names = {words[0]};
  return request;
}

std::string HelpText() {
  return std::string(kUsage) +
         "\n\n"
         "Fits the poles and zeros of H(s) to the problem in a Response Input File.\n\n"
         "  FILE           writes FILE.out.txt (the report) and FILE.last-run.ini (the problem\n"
         "                 with the answers found) beside it\n"
         "  --out FOLDER   writes them into FOLDER\n"
         "  --all-rows     a report with all rows of long tables\n"
         "  --json         tells the result as one JSON object on the standard output\n"
         "  --summary      runs many files and tells each in a line; --jobs N runs N at once,\n"
         "                 --csv gives comma-separated values\n"
         "  --orders A-B   tries A to B poles and tells how well each fits; writes no file\n"
         "  --help, --version\n"
         "  --             all words behind it are files\n\n"
         "  DATA_FILE DATA_FOLDER BASE_FOLDER DRIVE\n"
         "                 as the front end calls it: writes ~pft-out.txt and last-run.ini\n"
         "                 into BASE_FOLDER/Tessel.hz; DRIVE is BASE_FOLDER's first two\n"
         "                 characters\n\n"
         "Exit: 0 converged, 1 stopped early with the best point found, 2 faulty answers,\n"
         "3 data file unreadable, 4 output not writable, 5 no finite error, 6 wrong usage,\n"
         "7 another run is using the output folder; the highest of several files'.\n";
}

}  // namespace polefit

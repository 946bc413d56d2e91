#include "runs/run_record.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>

#include "platform/linux/detached_process.h"
#include "platform/linux/restart_entry.h"
#include "platform/paths.h"

namespace polefit {

namespace {

namespace fs = std::filesystem;

/// A file's time may lag behind the clock by one tick of the system's timer.
constexpr std::int64_t kClockGrain = 10'000'000;

std::string RunRecordPath(const std::string& programFolder) {
  return JoinPath(programFolder, "~pft-run.txt");
}

std::int64_t NanosecondsNow() {
  using namespace std::chrono;
  return duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count();
}

void RequireProgram(const std::string& path) {
  if (::access(path.c_str(), X_OK) == 0) return;
  RunTimeError error = FromSystemError(errno);
  error.description += ": " + path;
  throw error;
}

/// A run without a record could neither be found nor stopped later; it is ended at once.
void WriteRunRecord(const std::string& programFolder, const RunRecord& run) {
  const std::string path = RunRecordPath(programFolder);
  std::ofstream file(path + ".new", std::ios::binary | std::ios::trunc);
  file << run.processId << ' ' << run.processStart << ' ' << run.started << '\n'
       << run.dataFile << '\n'
       << run.command << '\n';
  file.close();
  std::error_code error;
  if (file) fs::rename(path + ".new", path, error);
  if (file && !error) return;
  EndGroup(run.processId, true);
  RunTimeError refusal = MakeRunTimeError(error_number::kPathFileAccessError);
  refusal.description += ": " + path;
  throw refusal;
}

/// Lets one program at a time look for a run and start one. The lock is on the folder itself.
class StartLock {
 public:
  explicit StartLock(const std::string& folder)
      : folder_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (folder_ >= 0) ::flock(folder_, LOCK_EX);
  }
  ~StartLock() {
    if (folder_ >= 0) ::close(folder_);
  }
  StartLock(const StartLock&) = delete;
  StartLock& operator=(const StartLock&) = delete;

 private:
  int folder_;
};

std::string RefusalOf(const RunRecord& run) {
  return "The run of '" + run.dataFile +
         "' is still going on, and a second one would overwrite its report and its results.  Wait "
         "for its end or stop it, then submit again.";
}

/// Starts the words with their output in a new log, which takes the former one's place only then.
long StartWithLog(const std::vector<std::string>& words, const std::string& log) {
  const std::string fresh = log + ".new";
  std::error_code error;
  fs::remove(fresh, error);
  try {
    const long processId = StartDetached(words, fresh);
    fs::rename(fresh, log, error);
    return processId;
  } catch (const RunTimeError&) {
    fs::remove(fresh, error);
    throw;
  }
}

RunRecord StartAndRecord(const Command& solver, const std::string& folder) {
  RequireProgram(solver.program);
  RunRecord run;
  run.started = NanosecondsNow();
  run.dataFile = solver.arguments.empty() ? std::string() : solver.arguments.front();
  run.command = CommandLine(solver);
  std::vector<std::string> words = solver.arguments;
  words.insert(words.begin(), solver.program);
  run.processId = StartWithLog(words, RunLogPath(folder));
  run.processStart = StartOfProcess(run.processId).value_or(0);
  WriteRunRecord(folder, run);
  return run;
}

}  // namespace

std::string ProgramFolderOf(const Command& command) {
  return command.program.substr(0, command.program.rfind(kSeparator));
}

RunRecord StartRun(const Command& command) {
  const std::string folder = ProgramFolderOf(command);
  const Command solver{JoinPath(folder, "pfit"), command.arguments, command.windowStyle};
  const StartLock lock(folder);
  if (const auto other = ReadRunRecord(folder); other && IsRunning(*other)) {
    throw RunTimeError{error_number::kPermissionDenied, RefusalOf(*other)};
  }
  try {
    return StartAndRecord(solver, folder);
  } catch (const RunTimeError&) {
    // A run that does not start must not bring the program back at the next log-on.
    WithdrawAutostartEntry();
    throw;
  }
}

std::optional<RunRecord> ReadRunRecord(const std::string& programFolder) {
  std::ifstream file(RunRecordPath(programFolder), std::ios::binary);
  RunRecord run;
  file >> run.processId >> run.processStart >> run.started;
  file.ignore(1);
  std::getline(file, run.dataFile);
  std::getline(file, run.command);
  return file ? std::optional(run) : std::nullopt;
}

bool IsRunning(const RunRecord& run) {
  return StartOfProcess(run.processId) == run.processStart;
}

bool IsResultOf(const RunRecord& run, const std::string& path) {
  std::error_code error;
  const auto written = fs::last_write_time(path, error);
  if (error) return false;
  const auto time = std::chrono::file_clock::to_sys(written).time_since_epoch();
  const auto since = std::chrono::duration_cast<std::chrono::nanoseconds>(time).count();
  return since >= run.started - kClockGrain;
}

std::string RunLogPath(const std::string& programFolder) {
  return JoinPath(programFolder, "~pft-log.txt");
}

bool MayStartRun(Program& program) {
  const std::optional<RunRecord> run = ReadRunRecord(program.folders.ProgramFolder);
  if (!run || !IsRunning(*run)) return true;
  program.host.MessageBox(RefusalOf(*run), message_style::kExclamation, "A run is going on");
  return false;
}

}  // namespace polefit

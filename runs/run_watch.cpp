#include "runs/run_watch.h"

#include <chrono>

namespace polefit {

namespace {

constexpr std::chrono::milliseconds kPatienceWithLock(2000);
/// How long the word of the process's end may come behind the end itself.
constexpr std::int64_t kPatienceWithEnding = 2000;

RunTimeError HeldFolder(const std::string& folder) {
  return {error_number::kPermissionDenied,
          "Another program holds the folder '" + folder +
              "', so no run can be started there now.  Try again when it has let go."};
}

/// The solver's closing line, without its name.
std::string ClosingWords(const std::string& line) {
  constexpr std::string_view kName = "pfit: ";
  return line.starts_with(kName) ? line.substr(kName.size()) : std::string();
}

}  // namespace

long RunWatch::Start(const Command& command) {
  const Places places = Places::Of(host_, {}, command.object);
  // One program at a time looks for a run and starts one.
  const std::unique_ptr<HeldLock> lock = host_.TakeLock(places.program, kPatienceWithLock);
  if (lock == nullptr) throw HeldFolder(places.program);
  const std::optional<RunRecord> other = ReadRunRecord(host_, places);
  if (other && ProcessOf(host_, *other, places)) {
    throw RunTimeError{error_number::kPermissionDenied, RefusalOf(*other)};
  }
  try {
    Watch(StartProcess(places, command), places);
  } catch (const RunTimeError&) {
    // A run that does not start must not bring the program back at the next log-on.
    host_.WithdrawRestart();
    throw;
  }
  return run_->process.id;
}

RunRecord RunWatch::StartProcess(const Places& places, const Command& command) {
  RunRecord run;
  run.words = command.arguments;
  run.words.insert(run.words.begin(), places.Solver());
  run.started = host_.MillisecondsNow();
  // No ending yet; and what is written from now on is newer than this file.
  host_.ReplaceFile(places.RunEnding(), "");
  const std::optional<FileState> made = host_.StateOfFile(places.RunEnding());
  run.stamp = made ? made->modified : 0;
  run.process = host_.StartProcess(
      {.words = run.words, .output = places.RunLog(), .ending = places.RunEnding()});
  Record(run, places);
  return run;
}

/// A run without a record could neither be found nor stopped later; it is ended at once.
void RunWatch::Record(const RunRecord& run, const Places& places) {
  try {
    WriteRunRecord(host_, places, run);
  } catch (const RunTimeError&) {
    host_.EndGroup(run.process.id, true);
    throw;
  }
}

bool RunWatch::Find(const Places& places) {
  const std::optional<RunRecord> run = ReadRunRecord(host_, places);
  const bool isWatched = IsOn() && run && run->process == run_->process;
  if (!run || isWatched || !ProcessOf(host_, *run, places)) return false;
  Watch(*run, places);
  return true;
}

bool RunWatch::Recall(const Places& places) {
  const std::optional<RunRecord> run = ReadRunRecord(host_, places);
  if (!run || ProcessOf(host_, *run, places)) return false;
  Watch(*run, places);
  isRecalled_ = true;
  over_ = 0;  // whatever word of its end there is has come
  Poll();
  return end_.has_value();
}

void RunWatch::Watch(const RunRecord& run, const Places& places) {
  run_ = run;
  places_ = places;
  log_ = {};
  end_.reset();
  isRecalled_ = false;
  over_.reset();
}

RunLog::News RunWatch::Poll() {
  if (!IsOn()) return {};
  // Asked before the log is read: what an ended run wrote is then all there.
  const bool isOver = !ProcessOf(host_, *run_, places_);
  const std::optional<ProcessEnding> ending = isOver ? Ending() : std::nullopt;
  RunLog::News news = log_.Read(host_, places_.RunLog());
  if (!isOver || (!ending && WaitsForEnding())) return news;
  // A machine line that was cut off would give wrong figures.
  const std::optional<MachineLine> figures = ReadMachineLine(log_.LineFromEnd(0));
  const std::string last = log_.TakeUnfinishedLine();
  if (!last.empty()) news.lines.push_back(last);
  Judge(ending, figures);
  return news;
}

std::optional<ProcessEnding> RunWatch::Ending() {
  try {
    const std::optional<ProcessEnding> ending = EndingIn(host_.ReadFile(places_.RunEnding()));
    return ending && ending->id == run_->process.id ? ending : std::nullopt;
  } catch (const RunTimeError&) {
    return std::nullopt;
  }
}

bool RunWatch::WaitsForEnding() {
  const std::int64_t now = host_.MillisecondsNow();
  if (!over_) over_ = now;
  return now - *over_ < kPatienceWithEnding && now >= *over_;
}

void RunWatch::Judge(const std::optional<ProcessEnding>& ending,
                     const std::optional<MachineLine>& figures) {
  // What the solver started may have outlived it.
  if (run_->stops > 0 && !isRecalled_ && !host_.StateOfProcess(run_->process.id)) {
    host_.EndGroup(run_->process.id, true);
  }
  EndOfRun end{.ending = ending,
               .figures = figures,
               .hasReport = IsResultOf(host_, *run_, places_.Report()),
               .hasValues = IsResultOf(host_, *run_, places_.LastRun()),
               .stops = run_->stops};
  const std::size_t closing = end.figures ? 1 : 0;
  end.closing = ClosingWords(log_.LineFromEnd(closing));
  end.lineBefore = log_.LineFromEnd(closing + 1);
  end_ = RunEnd{VerdictOn(end), end.hasReport, end.hasValues, end.figures.value_or(MachineLine{})};
}

Stopping RunWatch::Stop() {
  const std::optional<ProcessState> process =
      IsOn() ? ProcessOf(host_, *run_, places_) : std::nullopt;
  if (!process) return Stopping::isOver;
  const bool atOnce = run_->stops > 0;
  if (!process->isOwn || !host_.EndGroup(run_->process.id, atOnce)) return Stopping::isNotOurs;
  ++run_->stops;
  try {
    WriteRunRecord(host_, places_, *run_);
  } catch (const RunTimeError&) {
    // Only a later start of the program would not know that the run was asked to stop.
  }
  return atOnce ? Stopping::endedAtOnce : Stopping::asked;
}

std::int64_t RunWatch::Seconds() const {
  constexpr std::int64_t kMillisecondsPerSecond = 1000;
  return run_ ? (host_.MillisecondsNow() - run_->started) / kMillisecondsPerSecond : 0;
}

}  // namespace polefit

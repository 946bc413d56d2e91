#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/command.h"
#include "runs/run_log.h"
#include "runs/run_record.h"
#include "runs/verdict.h"

namespace polefit {

/// What came of a run.
struct RunEnd {
  Verdict verdict;
  bool hasReport = false;
  bool hasValues = false;
  /// The solver's own figures, where it told any.
  MachineLine figures;
};

/// What a request to stop has come to.
enum class Stopping { asked, endedAtOnce, isOver, isNotOurs };

/// Starts a run of the solver and watches it: its state is what the process, the log and the record
/// in the program folder say, so that nothing is lost when the program ends and starts again.
class RunWatch {
 public:
  explicit RunWatch(Host& host) : host_(host) {}

  /// Starts the solver of the program folder that is the command's object, with the command's
  /// arguments, and watches it; the process id. Throws RunTimeError, naming the path, when it
  /// cannot be started, and when another run is on there; that one's log and record then stay.
  long Start(const Command& command);
  /// Watches the run that is on in this installation; false when there is none, or when it is the
  /// one that is watched already.
  bool Find(const Places& places);
  /// Judges the last run of this installation once more; false when there is none, or one that is
  /// on.
  bool Recall(const Places& places);
  /// Reads what is new. The run has an end once the process is over and all is read.
  RunLog::News Poll();
  /// Asks the run to end with its best values; the second time it is ended at once.
  Stopping Stop();

  /// Whether a run is watched that has not ended.
  bool IsOn() const { return run_ && !end_; }
  /// The run that is watched or was last, if any.
  const std::optional<RunRecord>& Run() const { return run_; }
  const std::optional<RunEnd>& End() const { return end_; }
  std::optional<RunProgress> Progress() const { return log_.Progress(); }
  /// How long the run has been on.
  std::int64_t Seconds() const;

 private:
  void Watch(const RunRecord& run, const Places& places);
  RunRecord StartProcess(const Places& places, const Command& command);
  void Record(const RunRecord& run, const Places& places);
  std::optional<ProcessEnding> Ending();
  bool WaitsForEnding();
  void Judge(const std::optional<ProcessEnding>& ending, const std::optional<MachineLine>& figures);

  Host& host_;
  Places places_;
  std::optional<RunRecord> run_;
  RunLog log_;
  std::optional<RunEnd> end_;
  /// Its processes are long gone, and their numbers may be others' by now.
  bool isRecalled_ = false;
  /// When the process was first seen to be over, in milliseconds since 1970.
  std::optional<std::int64_t> over_;
};

}  // namespace polefit

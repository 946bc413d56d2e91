#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/host.h"
#include "platform/places.h"
#include "runs/kept_run.h"
#include "runs/run_watch.h"

namespace polefit {

/// At most so many runs, and bytes of them, are kept; the oldest go first, pinned ones never.
struct HistoryLimits {
  std::size_t runs = 200;
  std::uint64_t bytes = 200'000'000;
};

/// The ids of the runs that have had their time; each comes with the size of its file, the newest
/// first.
std::vector<std::string> RunsToDrop(const std::vector<std::pair<KeptRun, std::uint64_t>>& runs,
                                    const HistoryLimits& limits);

/// The runs that have ended, in the folder of what the program remembers for the user, readable by
/// that user only. A run is one file that is written whole, so that it is there or still to be
/// kept, whenever the program ends.
class RunHistory {
 public:
  explicit RunHistory(Host& host);

  /// Called with the first failure to keep a run; a run or a start goes on.
  std::function<void(const RunTimeError&)> onFailure;

  /// Keeps the data file of a run that has just been started: it may be edited while the run is on.
  void KeepInput(const RunRecord& run);
  /// Keeps a run that has ended, unless that is done.
  void Keep(const RunRecord& run, const RunEnd& end, const Places& places);
  /// The same for the last run of this program folder, if it has ended: nobody may have watched it.
  void KeepLast(const Places& places);

  /// The newest first. Torn and foreign files are left out.
  std::vector<KeptRun> All();
  /// Throws RunTimeError, as the following do.
  RunContents ContentsOf(const KeptRun& run);
  void SetNote(const KeptRun& run, const std::string& note);
  void SetPinned(const KeptRun& run, bool isPinned);
  void Delete(const KeptRun& run);

 private:
  void KeepWhole(const RunRecord& run, const RunEnd& end, const Places& places);
  RunContents ReadContents(const RunRecord& run, const RunEnd& end, const Places& places);
  std::vector<std::pair<KeptRun, std::uint64_t>> Sized();
  void Change(const KeptRun& run, const std::function<void(KeptRun&)>& change);
  void Drop();
  void Try(const std::function<void()>& action);
  std::string PathOf(const std::string& id) const;
  std::string InputPathOf(const std::string& id) const;

  Host& host_;
  std::string folder_;
  bool hasFailed_ = false;
};

}  // namespace polefit

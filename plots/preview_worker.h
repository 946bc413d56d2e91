#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

#include "plots/fit_curves.h"

namespace polefit {

/// What a run of the answers would give.
struct Preview {
  ResponseRecord record;  ///< with the values found
  std::optional<FitCurves> curves;
};

/// Solves copies of a record in a thread of its own, one at a time: a new request stops the one
/// that is being solved. No file is written and no process started.
class PreviewWorker {
 public:
  /// `found` is called in the worker's thread when there is a preview to take.
  explicit PreviewWorker(std::function<void()> found);
  /// Stops what is being solved and waits for the thread; that takes one model evaluation at most.
  ~PreviewWorker();
  PreviewWorker(const PreviewWorker&) = delete;
  PreviewWorker& operator=(const PreviewWorker&) = delete;

  void Request(const ResponseRecord& record);
  void Cancel();
  /// Gives the last preview away; nothing when there is none, or another request came since.
  std::optional<Preview> TakeFound();

 private:
  void Work();
  bool Keep(Preview preview);

  std::function<void()> tellFound_;
  std::mutex mutex_;
  std::condition_variable wakeUp_;
  std::optional<ResponseRecord> wanted_;
  std::optional<Preview> found_;
  bool ends_ = false;
  std::atomic<bool> isCancelled_ = false;
  std::thread thread_;
};

/// Solves the record with few starts; without curves when its answers have a fault or the search
/// was stopped.
Preview MakePreview(const ResponseRecord& record, const std::function<bool()>& isStopped);

}  // namespace polefit

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
  /// `done` is called in the worker's thread with each preview that was not cancelled.
  explicit PreviewWorker(std::function<void(Preview)> done);
  /// Stops what is being solved and waits for the thread; that takes one model evaluation at most.
  ~PreviewWorker();
  PreviewWorker(const PreviewWorker&) = delete;
  PreviewWorker& operator=(const PreviewWorker&) = delete;

  void Request(const ResponseRecord& record);
  void Cancel();

 private:
  void Work();

  std::function<void(Preview)> done_;
  std::mutex mutex_;
  std::condition_variable wakeUp_;
  std::optional<ResponseRecord> wanted_;
  bool ends_ = false;
  std::atomic<bool> isCancelled_ = false;
  std::thread thread_;
};

/// Solves the record with few starts; without curves when its answers have a fault or the search
/// was stopped.
Preview MakePreview(const ResponseRecord& record, const std::function<bool()>& isStopped);

}  // namespace polefit

#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "solver/orders.h"

namespace polefit {

/// Tries numbers of poles in a thread of its own. No file is written and no process started.
class OrdersWorker {
 public:
  /// `news` is called in the worker's thread after each number, and at the end.
  OrdersWorker(ResponseRecord record, int fewest, int most, std::function<void()> news);
  /// Stops and waits for the thread; that takes one model evaluation at most.
  ~OrdersWorker();
  OrdersWorker(const OrdersWorker&) = delete;
  OrdersWorker& operator=(const OrdersWorker&) = delete;

  /// What was found since this was last asked.
  std::vector<OrderFit> TakeFits();
  /// The whole table, once, when all numbers are tried.
  std::optional<OrderTable> TakeTable();

 private:
  std::atomic<bool> isStopped_ = false;
  std::mutex mutex_;
  std::vector<OrderFit> fits_;
  std::optional<OrderTable> table_;
  std::thread thread_;
};

}  // namespace polefit

#pragma once

#include <atomic>
#include <functional>
#include <thread>

#include "solver/orders.h"

namespace polefit {

/// Tries numbers of poles in a thread of its own. No file is written and no process started.
class OrdersWorker {
 public:
  /// `found` is called in the worker's thread after each number, `done` at the end unless it was
  /// stopped.
  OrdersWorker(ResponseRecord record, int fewest, int most,
               std::function<void(const OrderFit&)> found, std::function<void(OrderTable)> done);
  /// Stops and waits for the thread; that takes one model evaluation at most.
  ~OrdersWorker();
  OrdersWorker(const OrdersWorker&) = delete;
  OrdersWorker& operator=(const OrdersWorker&) = delete;

 private:
  std::atomic<bool> isStopped_ = false;
  std::thread thread_;
};

}  // namespace polefit

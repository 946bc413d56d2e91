#include "plots/orders_worker.h"

#include <utility>

namespace polefit {

OrdersWorker::OrdersWorker(ResponseRecord record, int fewest, int most,
                           std::function<void(const OrderFit&)> found,
                           std::function<void(OrderTable)> done)
    : thread_([this, record = std::move(record), fewest, most, found = std::move(found),
               done = std::move(done)] {
        OrderTable table = TryOrders(
            record, fewest, most, [this] { return isStopped_.load(); }, found);
        if (!isStopped_) done(std::move(table));
      }) {}

OrdersWorker::~OrdersWorker() {
  isStopped_ = true;
  thread_.join();
}

}  // namespace polefit

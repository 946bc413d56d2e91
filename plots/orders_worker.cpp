#include "plots/orders_worker.h"

#include <utility>

namespace polefit {

OrdersWorker::OrdersWorker(ResponseRecord record, int fewest, int most, std::function<void()> news)
    : thread_([this, record = std::move(record), fewest, most, news = std::move(news)] {
        const auto keepFit = [&](const OrderFit& fit) {
          {
            const std::lock_guard lock(mutex_);
            fits_.push_back(fit);
          }
          news();
        };
        OrderTable table = TryOrders(
            record, fewest, most, [this] { return isStopped_.load(); }, keepFit);
        {
          const std::lock_guard lock(mutex_);
          table_ = std::move(table);
        }
        news();
      }) {}

OrdersWorker::~OrdersWorker() {
  isStopped_ = true;
  thread_.join();
}

std::vector<OrderFit> OrdersWorker::TakeFits() {
  const std::lock_guard lock(mutex_);
  return std::exchange(fits_, {});
}

std::optional<OrderTable> OrdersWorker::TakeTable() {
  const std::lock_guard lock(mutex_);
  return std::exchange(table_, std::nullopt);
}

}  // namespace polefit

#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "record/response_record.h"
#include "solver/outcome.h"

namespace polefit {

/// How well the data are fitted with one number of poles.
struct OrderFit {
  int poles = 0;  ///< those of a lossless zero apart
  int singles = 0;
  int pairs = 0;
  double cost = 0;
  double rms = 0;       ///< weighted, in parts of the largest Yout
  double decibels = 0;  ///< the largest error; NaN where there is none
  /// Akaike's information criterion, corrected for few points: lower is better. Nothing where there
  /// are too few points for it.
  std::optional<double> criterion;
  /// Questions 6 to 9 with this fit.
  std::array<std::string, 4> answers;
};

/// What `--orders` finds.
struct OrderTable {
  std::vector<OrderFit> fits;
  /// Why the last number of poles that is missing could not be tried.
  std::vector<Finding> findings;
  /// The one with the lowest criterion; nothing when that is the last one tried.
  std::optional<std::size_t> best;
};

/// The most poles that are tried.
inline constexpr int kMostPolesTried = 40;

/// Fits the problem of a record with `fewest` to `most` poles, at least as many as it has zeros,
/// each time from the points. Of every number the split into single poles and pairs that fits
/// best. `found` is told of each as it is found.
OrderTable TryOrders(const ResponseRecord& record, int fewest, int most,
                     const std::function<bool()>& isStopRequested,
                     const std::function<void(const OrderFit&)>& found = {});

/// A line a number of poles, for people; and one JSON object with the same.
std::string OrdersAsText(const OrderTable& table);
std::string OrdersAsJson(const OrderTable& table);

}  // namespace polefit

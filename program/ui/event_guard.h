#pragma once

#include <functional>

#include "platform/host.h"

namespace polefit {

/// The last place that an error can reach: what no routine catches is shown with its number and
/// text, and the form and its data stay as they are. The end of the program ends the event loop.
class EventGuard {
 public:
  explicit EventGuard(Host& host) : host_(host) {}

  void Run(const std::function<void()>& action);

  /// True once the program has ended; no event loop must be started then.
  bool HasEnded() const { return ended_; }

 private:
  void Show(const std::string& title, const std::string& text);

  Host& host_;
  bool ended_ = false;
};

}  // namespace polefit

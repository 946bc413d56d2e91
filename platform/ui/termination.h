#pragma once

#include <QObject>
#include <functional>

class QSocketNotifier;

namespace polefit {

/// Calls back in the event loop when the system asks the process to end (SIGTERM, SIGINT, SIGHUP).
/// There is one at a time; while it lives these signals end nothing by themselves.
class Termination final : public QObject {
  Q_OBJECT

 public:
  explicit Termination(std::function<void()> asked);
  ~Termination() override;

 private:
  void Take();

  std::function<void()> asked_;
  QSocketNotifier* notifier_ = nullptr;
};

}  // namespace polefit

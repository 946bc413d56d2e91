#pragma once

#include <QCoreApplication>
#include <QString>
#include <functional>

#include "platform/host.h"

namespace polefit {

/// The last place that an error can reach: what no routine catches is shown with its number and
/// text. The end of the program ends the event loop.
class EventGuard {
  Q_DECLARE_TR_FUNCTIONS(EventGuard)

 public:
  explicit EventGuard(Host& host) : host_(host) {}

  /// `afterwards` is the sentence that tells what an error in `action` leaves behind.
  void Run(const std::function<void()>& action,
           const QString& afterwards = tr("The form and its data are as they were."));

  /// What has to be done before anything else when the program ends, or an error comes up that no
  /// routine has caught.
  std::function<void()> atRisk = [] {};

  /// True once the program has ended; no event loop must be started then.
  bool HasEnded() const { return ended_; }

 private:
  void Show(const std::string& error, const QString& afterwards);

  Host& host_;
  bool ended_ = false;
};

}  // namespace polefit

#pragma once

#include <functional>
#include <string>
#include <vector>

namespace polefit {

/// What a notice's button does. It may throw what commands throw.
struct NoticeButton {
  std::string caption;
  std::function<void()> action;
};

/// The higher, the sooner it is shown.
enum class Urgency { worthKnowing, asks, dataAtRisk };

/// Something that waits for a decision, but not now: never a success.
struct Notice {
  /// What it is about. A newer notice about the same takes the place of the older one.
  std::string about;
  Urgency urgency = Urgency::asks;
  std::string sentence;
  /// At most two.
  std::vector<NoticeButton> buttons = {};
};

/// The notices that wait, the most urgent first and of equal ones the oldest.
class NoticeBoard {
 public:
  void Post(Notice notice);
  /// Takes down what is about this, if it is there.
  void Remove(const std::string& about);
  const std::vector<Notice>& Waiting() const { return waiting_; }

  /// Called after every change.
  std::function<void()> onChange;

 private:
  void Drop(const std::string& about);

  std::vector<Notice> waiting_;
};

}  // namespace polefit

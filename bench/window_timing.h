#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <algorithm>
#include <vector>

namespace polefit {

/// Ends the process once a window has been painted.
class FirstPaint final : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

/// The shortest, the middle and the longest of some times, in ms.
struct Times {
  double shortest = 0;
  double middle = 0;
  double longest = 0;
};

template <typename Action>
Times Measure(int times, Action action) {
  std::vector<double> taken;
  for (int i = 0; i < times; ++i) {
    QElapsedTimer timer;
    timer.start();
    action();
    taken.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
  }
  std::sort(taken.begin(), taken.end());
  return {taken.front(), taken[taken.size() / 2], taken.back()};
}

/// The running program in a program folder of its own, which this process's settings and state
/// follow; empty when that could not be made.
QString InstallForTiming(const QString& base);

/// From the start of a program to its end, in ms, once for each argument: the shortest of `starts`
/// rounds, so that what else the machine does falls out.
std::vector<double> StartTimes(const QString& program, const QStringList& arguments, int starts);

}  // namespace polefit

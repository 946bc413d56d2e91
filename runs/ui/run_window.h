#pragma once

#include <QTimer>
#include <QWidget>
#include <string>

#include "runs/run_watch.h"

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

namespace polefit {

/// The solver's console: what is run, its output as it comes, how far it is, and at the end what
/// came of it. It only draws what the watch on the run says, so that closing it, or the program,
/// neither stops the run nor loses its output.
class RunWindow final : public QWidget {
  Q_OBJECT

 public:
  explicit RunWindow(RunWatch& watch);

  /// Shows the run that is watched, if it is not shown already.
  void ShowRun();
  void ShowInFront();

 Q_SIGNALS:
  void reportWanted();
  void improvedValuesWanted();
  /// The run has ended; `hasValues` when it left improved values.
  void runEnded(bool hasValues);

 private:
  void Build();
  void Poll();
  void ShowNews(const RunLog::News& news);
  void ShowTime();
  void Stop();
  void ShowEnd(const RunEnd& end);

  RunWatch& watch_;
  /// The run that is shown.
  ProcessName shown_;
  QTimer timer_;

  QLabel* lblDataFile_;
  QLabel* lblCommand_;
  QPlainTextEdit* output_;
  QLabel* lblState_;
  QLabel* lblElapsed_;
  QProgressBar* progress_;
  QLabel* lblVerdict_;
  QLabel* lblEnding_;
  QPushButton* cmdStop_;
  QPushButton* cmdReport_;
  QPushButton* cmdImproved_;
};

}  // namespace polefit

#pragma once

#include <QTimer>
#include <QWidget>
#include <string>

#include "runs/run_output.h"
#include "runs/run_record.h"

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

namespace polefit {

/// The solver's console: what is run, its output as it comes, how far it is, and at the end what
/// came of it. It reads the log in the program folder and holds nothing of the run itself, so that
/// closing it, or the program, neither stops the run nor loses its output.
class RunWindow final : public QWidget {
  Q_OBJECT

 public:
  RunWindow();

  /// Starts the solver as `command` says and shows its run; the process id. Throws RunTimeError
  /// when it cannot be started.
  long Start(const Command& command);
  /// Shows the run that is still on in the program folder, if there is one.
  void Find(const std::string& programFolder);
  void ShowInFront();

 Q_SIGNALS:
  void reportWanted();
  void improvedValuesWanted();

 private:
  void Build();
  void Watch(const RunRecord& run, const std::string& programFolder);
  void Poll();
  void ReadLog();
  void TakeLines(bool all);
  void TakeLine(const QByteArray& bytes);
  void ShowTime();
  void Stop();
  void End();
  std::string Path(const char* name) const;

  RunRecord run_;
  std::string programFolder_;
  QTimer timer_;
  qint64 logRead_ = 0;
  QByteArray pending_;
  std::string lastLine_;
  std::string lineBefore_;
  bool stopAsked_ = false;

  QLabel* lblDataFile_;
  QLabel* lblCommand_;
  QPlainTextEdit* output_;
  QLabel* lblState_;
  QLabel* lblElapsed_;
  QProgressBar* progress_;
  QLabel* lblVerdict_;
  QPushButton* cmdStop_;
  QPushButton* cmdReport_;
  QPushButton* cmdImproved_;
};

}  // namespace polefit

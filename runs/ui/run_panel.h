#pragma once

#include <QDockWidget>
#include <QElapsedTimer>
#include <QTimer>
#include <memory>
#include <vector>

#include "exchange/export.h"
#include "record/finding.h"
#include "runs/run_watch.h"

namespace polefit {

class MainWindow;
struct RunParts;

/// The run: what is run, the solver's output as it comes, how far it is, and at the end what came
/// of it. It only draws what the watch says, so that closing it, or the program, neither stops the
/// run nor loses its output. It shares the place of the findings and never takes the focus.
class RunPanel final : public QDockWidget {
  Q_OBJECT

 public:
  RunPanel(MainWindow& form, RunWatch& watch);
  ~RunPanel() override;

  /// Shows the run that is watched, if it is not shown already. `findings` are those in the file
  /// that it reads. A demo opens the panel at once, any other run by lasting or by its end.
  void ShowRun(const std::vector<Finding>& findings, bool isDemo);
  /// Shows the panel in front; a window of its own while the form is hidden.
  void Open();
  /// Whether the form asks for something else by now than the run that is shown.
  void SetOutdated(bool isOutdated);

 Q_SIGNALS:
  void reportWanted();
  void improvedValuesWanted();
  void copyAsWanted(const ExportFormatName& format);
  /// The run has ended; `hasValues` when it left improved values.
  void runEnded(bool hasValues);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Connect();
  void PutAside();
  void ShowFindings(const std::vector<Finding>& findings);
  void GoTo(int index);
  void Poll();
  void ShowNews(const RunLog::News& news);
  void ShowTime();
  void Stop();
  void ShowEnd(const RunEnd& end);
  void ShowTitle();
  void ShowStatus();
  /// Once the run has lasted longer than who waits would call at once.
  void ShowLasting();

  MainWindow& form_;
  RunWatch& watch_;
  /// The run that is shown.
  ProcessName shown_;
  std::vector<Finding> findings_;
  QTimer timer_;
  QElapsedTimer since_;
  bool isLasting_ = false;
  bool isOutdated_ = false;
  /// It is a window only because the form is hidden.
  bool isAside_ = false;
  std::unique_ptr<RunParts> parts_;
};

}  // namespace polefit

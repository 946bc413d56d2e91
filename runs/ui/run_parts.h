#pragma once

class QLabel;
class QListWidget;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QWidget;

namespace polefit {

class ErrorPlot;

/// The widgets of the run panel.
struct RunParts {
  /// Makes them and lays them out in `content`.
  RunParts();

  QWidget* content;
  QLabel* lblDataFile;
  QLabel* lblCommand;
  QLabel* lblState;
  QLabel* lblElapsed;
  QLabel* lblVerdict;
  /// How the search ended.
  QLabel* lblEnding;
  /// Says that the form asks for something else by now.
  QLabel* lblOutdated;
  QProgressBar* progress;
  QPlainTextEdit* output;
  QListWidget* findings;
  ErrorPlot* errors;
  QPushButton* cmdStop;
  QPushButton* cmdReport;
  QPushButton* cmdImproved;
  QPushButton* cmdCopyAs;
  QPushButton* cmdClose;

 private:
  void LayOut() const;
};

}  // namespace polefit

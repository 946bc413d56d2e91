#pragma once

#include <QLabel>
#include <QPushButton>
#include <QStatusBar>

namespace polefit {

/// The status bar of the main window. Each of its three places has one owner and shows nothing
/// else: left the findings, in the middle the run, right what the plots read out. A text that is
/// too long for its place is cut on the screen only; an empty one leaves the place to the others.
class StatusLine final : public QStatusBar {
  Q_OBJECT

 public:
  StatusLine();

  void ShowFindings(const QString& text);
  void ShowRun(const QString& text);
  void ShowReadOut(const QString& text);

 Q_SIGNALS:
  void findingsClicked();
  void runClicked();

 private:
  QPushButton* findings_;
  QPushButton* run_;
  QLabel* readOut_;
};

}  // namespace polefit

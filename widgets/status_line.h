#pragma once

#include <QPushButton>
#include <QStatusBar>
#include <QStringList>

namespace polefit {

class CutLabel;
class CutButton;

/// The status bar of the main window. Each of its three places has one owner and shows nothing
/// else: left the findings, in the middle the run, right what the plots read out. A text comes in
/// several lengths, the whole one first, of which the place shows the first that it has room for;
/// names for those who do not see them are whole. An empty text leaves its place to the others.
class StatusLine final : public QStatusBar {
  Q_OBJECT

 public:
  StatusLine();

  void ShowFindings(const QStringList& texts);
  void ShowRun(const QStringList& texts);
  void ShowReadOut(const QStringList& texts);

 Q_SIGNALS:
  void findingsClicked();
  void runClicked();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Arrange();

  CutButton* findings_;
  CutButton* run_;
  CutLabel* readOut_;
};

}  // namespace polefit

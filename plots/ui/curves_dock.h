#pragma once

#include <QDockWidget>
#include <QPointer>

#include "plots/kept_choices.h"
#include "plots/ui/live_curves.h"

namespace polefit {

/// The dock with the curves, right or left of the tabs; pulled off by its title, or where the
/// window is too narrow for both, a window of its own. What the user chose in it is remembered.
class CurvesDock final : public QDockWidget {
  Q_OBJECT

 public:
  CurvesDock(MainWindow& form, Program& program);

  CurvesPane& Pane() { return *pane_; }
  LiveCurves& Live() { return *live_; }
  MainWindow& Form() { return form_; }
  Program& State() const { return program_; }

  /// Shows the pane and moves into it, or back to the form.
  void ShowOrLeave();

 Q_SIGNALS:
  /// The answers of the last run are wanted on the form.
  void improvedValuesWanted();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void RestoreChoices();
  void SaveChoices() const;
  void ApplyWidth();
  void TakeWantedWidth();
  void Float();
  void ShowAsKept();
  void FollowForm(const QEvent& event);
  bool IsNarrow() const;

  MainWindow& form_;
  Program& program_;
  CurvesPane* pane_;
  LiveCurves* live_;
  /// What had the focus on the tabs last.
  QPointer<QWidget> former_;
  bool wasNarrow_ = false;
  /// The width beside the tabs that it was given by the user, or at first; 0 before. A window that
  /// is too narrow for it for a while does not change it.
  int wantedWidth_ = 0;
};

}  // namespace polefit

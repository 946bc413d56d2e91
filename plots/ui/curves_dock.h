#pragma once

#include <QDockWidget>
#include <QTimer>
#include <memory>
#include <optional>

#include "form/state.h"
#include "plots/fit_curves.h"
#include "plots/pane_state.h"
#include "plots/preview_worker.h"

class QLineEdit;

namespace polefit {

class CurvesPane;
class MainWindow;

/// The dock with the curves, right of the tabs. It reads the form a moment after the last key and
/// shows what is typed; it writes into the form only where the user moves a location or takes a
/// preview.
class CurvesDock final : public QDockWidget {
  Q_OBJECT

 public:
  CurvesDock(MainWindow& form, const Program& program);
  ~CurvesDock() override;

  CurvesPane& Pane() { return *pane_; }
  Host& Effects() const { return program_.host; }

  /// Shows the answers that a run has found beside what is typed; `time` is the run's.
  void ShowResult(const ResponseRecord& record, const QString& time);
  /// Shows the pane and moves into it, or back to the form.
  void ShowOrLeave();
  void SetPreview(bool isWanted);
  /// Puts the preview's values into the boxes.
  void TakePreview();
  /// Puts starting values from the points into the boxes that have none, or not as many as asked
  /// for.
  void SuggestStart();
  bool HasPreview() const { return preview_.has_value(); }
  /// Reads the form now.
  void Update();
  PaneState State() const { return state_; }

 Q_SIGNALS:
  void previewShown();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void WatchForm();
  void WatchPane();
  void RestoreChoices();
  void SaveChoices() const;
  void ReadTyped(const ResponseRecord& record);
  void ShowAll();
  bool FitsResult(bool& isChanged) const;
  void TakePreviewed(Preview preview);
  void SelectPoint(bool isDelay, std::size_t row);
  void SelectLocation(std::size_t location);
  void MoveTo(std::size_t location, double real, double imaginary, bool isEnd);
  void GiveDragBack();
  void MarkCurrentCell();
  void SetAnswer(int slot, const std::string& text);
  void ApplyWidth();
  QLineEdit* BoxOf(int slot) const;

  MainWindow& form_;
  const Program& program_;
  CurvesPane* pane_;
  QTimer timer_;
  ResponseRecord shownRecord_;
  std::optional<FitCurves> typed_;
  bool isTypedGood_ = false;
  std::optional<FitCurves> result_;
  ResponseRecord resultRecord_;
  QString resultTime_;
  std::optional<FitCurves> preview_;
  ResponseRecord previewRecord_;
  bool wantsPreview_ = false;
  PaneState state_ = PaneState::nothing;
  /// The answers as they were before the location that is being dragged was touched.
  std::optional<ResponseRecord> beforeDrag_;
  bool wasNarrow_ = false;
  bool isFirstShow_ = true;
  /// Last, so that it ends before what it hands its previews to.
  std::unique_ptr<PreviewWorker> worker_;
};

}  // namespace polefit

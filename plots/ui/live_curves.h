#pragma once

#include <QObject>
#include <QTimer>
#include <memory>
#include <optional>

#include "form/state.h"
#include "plots/curve_set.h"
#include "plots/move_location.h"
#include "plots/ui/location_boxes.h"

namespace polefit {

class CurvesPane;
class MainWindow;

/// Keeps the pane's curves in step with the form: reads the form a moment after the last key, while
/// the pane is seen, and writes into it only where the user moves, adds or takes something, each
/// time as one step of undo.
class LiveCurves final : public QObject {
  Q_OBJECT

 public:
  LiveCurves(MainWindow& form, Program& program, CurvesPane& pane);
  ~LiveCurves() override;

  /// Whether the pane is seen: else nothing is read.
  void SetSeen(bool isSeen);
  /// Reads and shows the form now.
  void Update();
  /// The form as it stands.
  ResponseRecord Record() const;

  /// Shows the answers that a run has found beside what is typed; `time` is the run's.
  void ShowResult(const ResponseRecord& record, const QString& time);
  /// Shows answers of earlier runs too.
  void ShowOthers(const std::vector<NamedAnswers>& others);
  void SetPreview(bool isWanted);
  /// Puts the preview's values into the boxes.
  void TakePreview();
  /// Puts starting values from the points into the boxes that have none, or not as many as asked
  /// for. Where all are filled a notice offers to replace them.
  void SuggestStart();
  /// Shows answers in place of others, as one step of this name.
  void TakeAnswers(const std::vector<ChangedAnswer>& answers, const QString& step);

  PaneState State() const { return curves_.State(); }
  const CurveSet& Curves() const { return curves_; }

 Q_SIGNALS:
  void previewShown();

 private:
  void WatchForm();
  void WatchPane();
  void ReadForm();
  void ShowAll();
  void ShowNow();
  void RequestPreview();
  void TakePreviewed();
  void PutAsStep(const ResponseRecord& record, const QString& step);
  void ReplaceStart();
  void SelectPoint(bool isDelay, std::size_t row);
  void MoveTo(std::size_t location, double real, double imaginary, bool isEnd);
  void PutDragged(double real, double imaginary);
  void GiveDragBack();
  void MarkCurrentCells();

  MainWindow& form_;
  Program& program_;
  CurvesPane& pane_;
  LocationBoxes boxes_;
  QTimer timer_;
  bool isSeen_ = false;
  CurveSet curves_;
  bool wantsPreview_ = false;
  /// The location that is being dragged, by its place in the answers, and these as they were.
  struct Drag {
    ResponseRecord before;
    FactorKind kind;
    std::size_t word;
  };
  std::optional<Drag> drag_;
  /// Last, so that it ends before what it hands its previews to.
  std::unique_ptr<PreviewWorker> worker_;
};

}  // namespace polefit
